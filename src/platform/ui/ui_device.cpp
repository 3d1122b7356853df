#include "platform/ui/ui_device.h"

namespace zelkam {

UIDevice &UIDevice::current()
{
    static UIDevice device;
    return device;
}

} // namespace zelkam
