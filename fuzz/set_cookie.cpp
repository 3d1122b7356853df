// Whatever a server sets, the cookies that come back are safe to send, none is another domain's,
// and what comes in the clear leaves a secure cookie alone.
#include "platform/network/header_text.h"
#include "platform/network/http_cookie_storage.h"

#include <cstdlib>

using namespace zelkam;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static const URL urls[] = {*URL::fromString(QStringLiteral("https://www.example.org/a/b")),
                               *URL::fromString(QStringLiteral("http://www.example.org./a/b")),
                               *URL::fromString(QStringLiteral("file://"))};
    static const URL inTheClear = *URL::fromString(QStringLiteral("http://www.example.org/"));
    HTTPCookie secure(QStringLiteral("a"), QStringLiteral("own"), QStringLiteral(".example.org"),
                      {});
    secure.isSecure = true;
    const QByteArrayView bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    for (const URL &url : urls) {
        HTTPCookieStorage store;
        store.setCookie(secure);
        auto cookies =
            HTTPCookie::cookies({{QStringLiteral("Set-Cookie"), headerText(bytes)}}, url);
        for (HTTPCookie &cookie : cookies) {
            if (!url.host())
                cookie.setOrigin(inTheClear);
            else if (!cookie.isOfItsOrigin())
                std::abort();
            store.setCookie(cookie);
        }
        const QList<HTTPCookie> stored = *store.cookies();
        if (url.scheme() != QLatin1String("https") && stored.first() != secure)
            std::abort();
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
