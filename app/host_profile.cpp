#include "app/host_profile.h"

#include <QDir>
#include <QStandardPaths>
#include <QWebEngineDownloadRequest>
#include <QWebEngineSettings>

namespace zelkam {

HostProfile::HostProfile(bool persistent, const std::optional<QLocale> &language)
{
    const QString name = QStringLiteral("zelkam-mobile");
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    if (persistent && QDir().mkpath(folder)) {
        m_lock = std::make_unique<QLockFile>(folder + QStringLiteral("/profile.lock"));
        if (!m_lock->tryLock())
            m_lock.reset();
    }
    m_profile =
        m_lock ? std::make_unique<QWebEngineProfile>(name) : std::make_unique<QWebEngineProfile>();
    if (language) {
        QStringList tags{language->bcp47Name()};
        const QString bare = QLocale::languageToCode(language->language());
        if (!tags.contains(bare))
            tags.append(bare);
        m_profile->setHttpAcceptLanguage(tags.join(u','));
    }
    QWebEngineSettings &settings = *m_profile->settings();
    // The host draws what it has to say about a page that cannot be loaded.
    settings.setAttribute(QWebEngineSettings::ErrorPageEnabled, false);
    settings.setAttribute(QWebEngineSettings::ScrollAnimatorEnabled, true);
    settings.setAttribute(QWebEngineSettings::FocusOnNavigationEnabled, true);
    settings.setAttribute(QWebEngineSettings::LocalContentCanAccessFileUrls, false);
    // A link that the web view would save leads nowhere: files are the commands' business.
    QObject::connect(m_profile.get(), &QWebEngineProfile::downloadRequested, m_profile.get(),
                     [](QWebEngineDownloadRequest *download) {
                         qWarning("A page may save files with fileDownload only, not by a link: %s",
                                  qUtf8Printable(download->url().toDisplayString()));
                         download->cancel();
                     });
}

} // namespace zelkam
