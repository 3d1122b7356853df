#include "plugin/zelkam_mobile_single_image_picker.h"

#include "platform/foundation/console.h"
#include "platform/ui/layout_guide.h"

#include <QWidget>

namespace zelkam {

ZelkamMobileSingleImagePicker::ZelkamMobileSingleImagePicker(std::optional<QString> nibName,
                                                             const Bundle *bundle)
    : UIViewController(std::move(nibName), bundle),
      imagePicker(std::make_shared<UIImagePickerController>())
{
}

ZelkamMobileSingleImagePicker::ZelkamMobileSingleImagePicker(const NSCoder &coder)
    : UIViewController(coder), imagePicker(std::make_shared<UIImagePickerController>())
{
}

ZelkamMobileSingleImagePicker::~ZelkamMobileSingleImagePicker()
{
    // Takes the picker's view out of this one's as well.
    imagePicker->removeFromParent();
    print(QStringLiteral("dealloc <ZelkamMobileSingleImagePicker: 0x%1>")
              .arg(reinterpret_cast<quintptr>(this), 0, 16));
}

void ZelkamMobileSingleImagePicker::viewDidLoad()
{
    UIViewController::viewDidLoad();
    imagePicker->sourceType = sourceType;
    imagePicker->allowsEditing = false;
}

void ZelkamMobileSingleImagePicker::viewDidAppear(bool animated)
{
    UIViewController::viewDidAppear(animated);
    addChild(imagePicker);
    addSubview(view(), imagePicker->view());
    imagePicker->view()->setGeometry(view()->rect());
    imagePicker->didMove(this);
}

void ZelkamMobileSingleImagePicker::viewDidLayoutSubviews()
{
    UIViewController::viewDidLayoutSubviews();
    if (imagePicker->parentViewController() == this)
        imagePicker->view()->setGeometry(view()->rect());
}

void ZelkamMobileSingleImagePicker::didReceiveMemoryWarning()
{
    UIViewController::didReceiveMemoryWarning(); // the picker looks after its own
}

bool ZelkamMobileSingleImagePicker::cancelOperation()
{
    return imagePicker->cancelOperation();
}

bool ZelkamMobileSingleImagePicker::acceptOperation()
{
    return imagePicker->acceptOperation();
}

} // namespace zelkam
