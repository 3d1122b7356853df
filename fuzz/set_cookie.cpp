// Whatever a server sets, the cookies that come back are safe to send.
#include "platform/network/header_text.h"
#include "platform/network/http_cookie_storage.h"

#include <cstdlib>

using namespace zelkam;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static const URL urls[] = {*URL::fromString(QStringLiteral("https://www.example.org/a/b")),
                               *URL::fromString(QStringLiteral("file://"))};
    const QByteArrayView bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    for (const URL &url : urls) {
        HTTPCookieStorage store;
        const auto cookies =
            HTTPCookie::cookies({{QStringLiteral("Set-Cookie"), headerText(bytes)}}, url);
        for (const HTTPCookie &cookie : cookies)
            store.setCookie(cookie);
        const QList<HTTPCookie> stored = *store.cookies();
        for (const QString &value : HTTPCookie::requestHeaderFields(stored)) {
            if (!isHeaderValue(headerBytes(value)))
                std::abort();
        }
        for (const HTTPCookie &cookie : stored) {
            const auto again = HTTPCookie::fromNetworkCookie(cookie.toNetworkCookie());
            if (!cookie.effectiveDomain().isEmpty() && !again.hasSameIdentity(cookie))
                std::abort();
        }
    }
    return 0;
}
