#include "platform/network/address_space.h"

#include <QHostAddress>
#include <algorithm>

namespace zelkam {

namespace {

// By IANA's registries of special-purpose addresses. Networks that exist for documentation only
// count as public: nothing private can be there.
constexpr const char *ownNetworks[] = {"127.0.0.0/8", "0.0.0.0/8", "::1/128", "::/128"};
constexpr const char *privateNetworks[] = {"10.0.0.0/8",    "100.64.0.0/10", "169.254.0.0/16",
                                           "172.16.0.0/12", "192.0.0.0/24",  "192.168.0.0/16",
                                           "198.18.0.0/15", "240.0.0.0/4",   "64:ff9b:1::/48",
                                           "fc00::/7",      "fe80::/10",     "fec0::/10"};

/// A network of IPv6 whose addresses hold one of IPv4, and the byte at which that begins.
struct Embedding
{
    const char *network;
    int firstByte;
};
constexpr Embedding embeddings[] = {
    {"::ffff:0:0/96", 12},   // mapped (RFC 4291)
    {"::ffff:0:0:0/96", 12}, // translated (RFC 2765)
    {"64:ff9b::/96", 12},    // translated (RFC 6052)
    {"2002::/16", 2},        // 6to4 (RFC 3056)
    {"::/96", 12},           // compatible (RFC 4291); after "::1", which lies within
};

bool isIn(const QHostAddress &address, const char *network)
{
    return address.isInSubnet(QHostAddress::parseSubnet(QLatin1String(network)));
}

AddressSpace spaceOf(const QHostAddress &address)
{
    const auto isInNetwork = [&](const char *network) { return isIn(address, network); };
    if (std::any_of(std::begin(ownNetworks), std::end(ownNetworks), isInNetwork))
        return AddressSpace::thisMachine;
    if (std::any_of(std::begin(privateNetworks), std::end(privateNetworks), isInNetwork))
        return AddressSpace::privateNetwork;
    for (const auto &[network, firstByte] : embeddings) {
        if (!isIn(address, network))
            continue;
        quint32 number = 0;
        for (int i = 0; i < 4; ++i)
            number = number << 8 | address.toIPv6Address()[firstByte + i];
        return spaceOf(QHostAddress(number));
    }
    return AddressSpace::publicNetwork;
}

} // namespace

AddressSpace addressSpaceOf(const QString &address)
{
    return spaceOf(QHostAddress(address));
}

} // namespace zelkam
