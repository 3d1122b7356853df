#include "app/container_address.h"

#include "app/web_origin.h"
#include "platform/foundation/file_manager.h"
#include "platform/foundation/percent_encoding.h"
#include "platform/foundation/sandbox_path.h"

#include <QFile>

namespace zelkam {

namespace {

using namespace Qt::StringLiterals;

const QLatin1String containerHost("container");

bool isPlainComponent(const QString &component)
{
    return !component.isEmpty() && component != u"." && component != u".." &&
           !component.contains(u'/') && !component.contains(QChar(u'\0'));
}

} // namespace

std::optional<URL> containerAddress(const URL &fileUrl)
{
    if (!fileUrl.isFileURL())
        return std::nullopt;
    const QString container = NSTemporaryDirectory();
    const QString path = fileUrl.path();
    if (!path.startsWith(container))
        return std::nullopt;
    QString address = QLatin1String(hostScheme) + u"://"_s + containerHost;
    const QStringList components = path.mid(container.size()).split(u'/');
    for (const QString &component : components) {
        if (!isPlainComponent(component))
            return std::nullopt;
        address += u'/' + QString::fromLatin1(QUrl::toPercentEncoding(component));
    }
    return URL::fromString(address);
}

std::optional<QString> containerPath(const QUrl &address)
{
    if (address.scheme() != QLatin1String(hostScheme) || address.host() != containerHost)
        return std::nullopt;
    const QString encoded = address.path(QUrl::FullyEncoded);
    if (!encoded.startsWith(u'/'))
        return std::nullopt;
    QStringList components = encoded.mid(1).split(u'/');
    for (QString &component : components) {
        const auto decoded = removingPercentEncoding(component);
        if (!decoded || !isPlainComponent(*decoded))
            return std::nullopt;
        component = *decoded;
    }
    return NSTemporaryDirectory() + components.join(u'/');
}

std::unique_ptr<QFile> openContainerFile(const QString &path)
{
    std::error_code error;
    const auto place = resolveInContainer(path, error);
    return place ? openRegularFile(*place) : nullptr;
}

} // namespace zelkam
