#include "platform/network/connectivity.h"

#include <QHostAddress>
#include <atomic>
#include <ifaddrs.h>
#include <memory>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace zelkam {

namespace {

std::atomic<ConnectivityCheck> currentCheck = &hasUsableNetworkInterface;

bool reachesFurther(const sockaddr *address)
{
    if (!address)
        return false;
    if (address->sa_family == AF_INET)
        return true;
    return address->sa_family == AF_INET6 && !QHostAddress(address).isLinkLocal();
}

} // namespace

bool hasUsableNetworkInterface()
{
    ifaddrs *first = nullptr;
    if (::getifaddrs(&first) != 0)
        return true; // not known: the transfer itself finds out
    const std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)> list(first, &::freeifaddrs);
    for (const ifaddrs *entry = first; entry; entry = entry->ifa_next) {
        constexpr unsigned int needed = IFF_UP | IFF_RUNNING;
        if ((entry->ifa_flags & needed) == needed && !(entry->ifa_flags & IFF_LOOPBACK) &&
            reachesFurther(entry->ifa_addr))
            return true;
    }
    return false;
}

bool isLoopbackHost(const QString &host)
{
    const QString name = host.toLower();
    return name == QStringLiteral("localhost") || name.endsWith(QStringLiteral(".localhost")) ||
           QHostAddress(name).isLoopback();
}

void setConnectivityCheck(ConnectivityCheck check)
{
    currentCheck = check ? check : &hasUsableNetworkInterface;
}

bool isConnected()
{
    return currentCheck.load()();
}

} // namespace zelkam
