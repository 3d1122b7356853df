#include "toast/toast_manager.h"

namespace zelkam {

ToastManager &ToastManager::shared()
{
    static ToastManager manager;
    return manager;
}

} // namespace zelkam
