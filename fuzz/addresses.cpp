// Any text is an address of the container, of an origin or of a server, or none: no address leads
// out of the container, and each names one place, whichever way it is taken.
#include "app/container_address.h"
#include "app/web_origin.h"
#include "platform/foundation/file_manager.h"

#include <cstdlib>

using namespace zelkam;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const auto text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QUrl url(text);
    if (const auto path = containerPath(url)) {
        const QString below = path->mid(NSTemporaryDirectory().size());
        if (!path->startsWith(NSTemporaryDirectory()) ||
            below.split(u'/').contains(QLatin1String("..")) || below.contains(QChar(0)))
            std::abort();
        const auto back = containerAddress(URL::fromFilePath(*path));
        if (!back || containerPath(back->toQUrl()) != path)
            std::abort();
    }
    if (const auto origin = WebOrigin::fromText(text)) {
        if (WebOrigin::fromText(origin->toString()) != origin || WebOrigin::fromUrl(url) != origin)
            std::abort();
    }
    if (const auto server = URL::fromString(text)) {
        for (const QChar c : server->absoluteString()) {
            if (c <= u' ' || c > u'~' || c == u'\\')
                std::abort();
        }
        if (URL::fromString(server->absoluteString()) != server)
            std::abort();
    }
    return 0;
}
