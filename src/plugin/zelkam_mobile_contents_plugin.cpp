#include "plugin/zelkam_mobile_contents_plugin.h"

#include "platform/foundation/bundle.h"

#include <utility>

namespace zelkam {

ZelkamMobileContentsPlugin::ZelkamMobileContentsPlugin()
{
    Bundle::add(QStringLiteral("zelkam.mobile.ZelkamMobileContents"));
}

ZelkamMobileContentsPlugin::~ZelkamMobileContentsPlugin() = default;

CallBackManagerPtr ZelkamMobileContentsPlugin::currentCallBack() const
{
    const std::lock_guard lock(m_mutex);
    return m_currentCallBack;
}

void ZelkamMobileContentsPlugin::setCurrentCallBack(CallBackManagerPtr callBack)
{
    {
        const std::lock_guard lock(m_mutex);
        std::swap(m_currentCallBack, callBack);
    }
    // The call that was there is let go here, outside of the lock: its end may tell the page
    // something, and what that leads to is not this object's to know.
}

void ZelkamMobileContentsPlugin::presentPicker(const std::shared_ptr<UIViewController> &picker)
{
    if (UIViewController *presenter = presenterOfPicker(picker))
        presenter->present(picker, true);
}

UIViewController *
ZelkamMobileContentsPlugin::presenterOfPicker(const std::shared_ptr<UIViewController> &picker)
{
    addScreen(picker);
    UIViewController *presenter = viewController();
    const auto last = m_lastPicker.lock();
    if (!presenter || (last && last->presentingViewController()))
        return presenter;
    while (const auto above = presenter->presentedViewController())
        presenter = above.get();
    m_lastPicker = picker;
    return presenter;
}

} // namespace zelkam
