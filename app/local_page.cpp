#include "app/local_page.h"

#include "app/web_origin.h"
#include "platform/foundation/file_manager.h"
#include "platform/foundation/sandbox_path.h"

#include <QDir>
#include <QFileInfo>

namespace zelkam {

namespace {

const QLatin1String appHost("app");

} // namespace

LocalPage::LocalPage(const QString &file)
{
    const QFileInfo info(file);
    m_folder = info.absolutePath();
    if (!m_folder.endsWith(u'/'))
        m_folder += u'/';
    m_name = info.fileName();
}

QUrl LocalPage::address() const
{
    QUrl url;
    url.setScheme(QLatin1String(hostScheme));
    url.setHost(appHost);
    url.setPath(u'/' + m_name, QUrl::DecodedMode);
    return url;
}

std::unique_ptr<QFile> LocalPage::open(const QUrl &address) const
{
    if (address.scheme() != QLatin1String(hostScheme) || address.host() != appHost)
        return nullptr;
    const QString relative = address.path(QUrl::FullyDecoded).mid(1);
    // Downloads may lie below the page's folder; they must not get the page's rights.
    const QString container = QFileInfo(NSTemporaryDirectory()).canonicalFilePath();
    const bool isDownload = QDir::cleanPath(m_folder + relative).startsWith(container + u'/');
    if (isDownload && relative != m_name)
        return nullptr;
    std::error_code error;
    const auto place = resolveBelow(m_folder, relative, error);
    return place ? openRegularFile(*place) : nullptr;
}

} // namespace zelkam
