#pragma once

#include <QVersionNumber>

namespace zelkam {

/// The platform version that the plug-in sees. A setting, so that the behaviour of older
/// versions stays reachable; the newest (18.0) by default.
QVersionNumber systemVersion();

/// Main thread, at start.
void setSystemVersion(const QVersionNumber &version);

/// Whether the platform is at least of this version.
bool isSystemVersionAtLeast(int major, int minor);

} // namespace zelkam
