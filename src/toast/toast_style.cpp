#include "toast/toast_style.h"

namespace zelkam {

ToastStyle::ToastStyle()
{
    // Pixel sizes of Qt are device-independent: they are the points of this library.
    titleFont.setPixelSize(16);
    titleFont.setBold(true);
    messageFont.setPixelSize(16);
}

} // namespace zelkam
