#include "platform/foundation/system_version.h"

namespace zelkam {

namespace {

QVersionNumber &setting()
{
    static QVersionNumber version(18, 0);
    return version;
}

} // namespace

QVersionNumber systemVersion()
{
    return setting();
}

void setSystemVersion(const QVersionNumber &version)
{
    setting() = version;
}

bool isSystemVersionAtLeast(int major, int minor)
{
    return setting() >= QVersionNumber(major, minor);
}

} // namespace zelkam
