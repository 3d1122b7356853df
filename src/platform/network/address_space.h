#pragma once

#include <QString>

namespace zelkam {

/// How private a network is, the most private last.
enum class AddressSpace { publicNetwork, privateNetwork, thisMachine };

/// Where an address lies, given in numbers as IPv4 or IPv6; everything else counts as public. An
/// IPv6 address that stands for one of IPv4 (mapped, translated, tunnelled) lies where that lies.
AddressSpace addressSpaceOf(const QString &address);

} // namespace zelkam
