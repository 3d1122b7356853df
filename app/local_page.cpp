#include "app/local_page.h"

#include "app/web_origin.h"
#include "platform/foundation/file_manager.h"

#include <QFileInfo>

namespace zelkam {

namespace {

using namespace Qt::StringLiterals;
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
    if (relative.split(u'/').contains(u".."_s) || relative.contains(QChar(u'\0')))
        return nullptr;
    const QString path = m_folder + relative;
    // Downloads may lie below the page's folder; they must not get the page's rights.
    const QString canonical = QFileInfo(path).canonicalFilePath();
    const QString container = QFileInfo(NSTemporaryDirectory()).canonicalFilePath();
    const bool isPage = relative == m_name;
    if (canonical.isEmpty() || (!isPage && canonical.startsWith(container + u'/')) ||
        !QFileInfo(canonical).isFile())
        return nullptr;
    auto file = std::make_unique<QFile>(canonical);
    if (!file->open(QIODevice::ReadOnly))
        return nullptr;
    return file;
}

} // namespace zelkam
