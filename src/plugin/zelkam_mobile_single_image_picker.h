#pragma once

#include "platform/photos_ui/ui_image_picker_controller.h"
#include "platform/ui/ui_view_controller.h"

#include <memory>
#include <optional>

namespace zelkam {

/// The screen that the system's image picker fills. It has no controls and decides nothing: the
/// delegate of the picker, which is set from outside, gets the result and dismisses the screen.
/// Esc goes to the picker, so that its delegate hears of it.
///
/// Make it with std::make_shared, set the delegate and the source, and present it. Main thread.
class ZelkamMobileSingleImagePicker : public UIViewController
{
    Q_OBJECT

public:
    /// The nib name and the bundle are taken for callers' sake; all views are built in code.
    explicit ZelkamMobileSingleImagePicker(std::optional<QString> nibName = std::nullopt,
                                           const Bundle *bundle = nullptr);
    explicit ZelkamMobileSingleImagePicker(const NSCoder &coder);
    /// Writes "dealloc " and what the screen is to standard output.
    ~ZelkamMobileSingleImagePicker() override;

    const std::shared_ptr<UIImagePickerController> imagePicker;

    /// Given to the picker when the view loads: later changes have no effect.
    UIImagePickerControllerSourceType sourceType = UIImagePickerControllerSourceType::photoLibrary;

    void viewDidLoad() override;
    /// Embeds the picker, on every appearance.
    void viewDidAppear(bool animated) override;
    void viewDidLayoutSubviews() override;
    void didReceiveMemoryWarning() override;
    bool cancelOperation() override;
    bool acceptOperation() override;
};

} // namespace zelkam
