// Wherever a server sends a request, nothing of it reaches another origin, and what goes on the
// wire is well-formed. Each line is one redirect: a location, and cookies with a tab before each.
#include "platform/network/header_text.h"
#include "platform/network/request_chain.h"

#include <cstdlib>

using namespace zelkam;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QByteArray secret = QByteArray::number(qHash(bytes)); // which no input can hold
    URLRequest request(*URL::fromString(QStringLiteral("https://h.example/a")));
    request.setValue(QString::fromLatin1(secret), QStringLiteral("X-Own"));
    request.setValue(QStringLiteral("own=") + QString::fromLatin1(secret),
                     QStringLiteral("Cookie"));
    RequestChain chain(request, {.allowsUnsafeRedirects = true, .ownServer = {}});
    bool hasLeft = false;
    for (const QByteArray &line : bytes.split('\n')) {
        QByteArrayList cookies = line.split('\t');
        const QByteArray location = cookies.takeFirst();
        if (chain.follow(307, location,
                         {{QStringLiteral("Set-Cookie"), headerText(cookies.join('\n'))}}))
            break;
        const QUrl at = chain.url().toQUrl();
        hasLeft = hasLeft || at.scheme() != QLatin1String("https") ||
                  at.host() != QLatin1String("h.example") || at.port(443) != 443;
        const QUrl onWire = QUrl::fromEncoded(chain.urlOnWire());
        if (onWire.host().isEmpty() || !onWire.userInfo().isEmpty() || onWire.hasFragment())
            std::abort();
        for (const QByteArray &header : chain.headerLines()) {
            if (!isHeaderValue(header) || (hasLeft && header.contains(secret)))
                std::abort();
        }
    }
    return 0;
}
