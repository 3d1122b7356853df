#include "host/visible_view_controller.h"

#include "platform/ui/ui_application.h"
#include "platform/ui/ui_window.h"

namespace zelkam {

UIViewController *visibleViewController(const UIApplication &application)
{
    const UIWindow *window = application.keyWindow();
    return window ? UIApplication::topViewController(window->rootViewController().get()) : nullptr;
}

} // namespace zelkam
