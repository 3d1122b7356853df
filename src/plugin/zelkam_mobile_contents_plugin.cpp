#include "plugin/zelkam_mobile_contents_plugin.h"

#include "platform/foundation/bundle.h"

namespace zelkam {

ZelkamMobileContentsPlugin::ZelkamMobileContentsPlugin()
{
    Bundle::add(QStringLiteral("zelkam.mobile.ZelkamMobileContents"));
}

ZelkamMobileContentsPlugin::~ZelkamMobileContentsPlugin() = default;

std::shared_ptr<void> ZelkamMobileContentsPlugin::expectPicker()
{
    const auto picker = m_picker.lock();
    const bool isUp = picker && picker->presentingViewController() && !picker->isBeingDismissed();
    if (isUp || !m_pickerComes.expired())
        return nullptr;
    const auto comes = std::make_shared<char>();
    m_pickerComes = comes;
    return comes;
}

void ZelkamMobileContentsPlugin::pickerAnswers()
{
    m_picker.reset();
    m_pickerComes.reset();
}

UIViewController *
ZelkamMobileContentsPlugin::presenterOfPicker(const std::shared_ptr<UIViewController> &picker)
{
    m_picker = picker;
    addScreen(picker);
    UIViewController *presenter = viewController();
    while (const auto above = presenter ? presenter->presentedViewController() : nullptr)
        presenter = above.get();
    return presenter;
}

void ZelkamMobileContentsPlugin::presentPicker(const std::shared_ptr<UIViewController> &picker,
                                               const std::shared_ptr<void> &comes)
{
    if (UIViewController *presenter = presenterOfPicker(picker))
        presenter->present(picker, true, [comes] {});
}

} // namespace zelkam
