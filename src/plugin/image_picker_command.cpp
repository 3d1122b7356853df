#include "plugin/zelkam_mobile_contents_plugin.h"

#include "host/argument_values.h"
#include "host/zlog.h"
#include "platform/foundation/console.h"
#include "platform/foundation/dispatch_queue.h"
#include "platform/images/image_representation.h"
#include "plugin/data_url.h"
#include "plugin/zelkam_mobile_single_image_picker.h"

#include <QImage>
#include <QPointer>

namespace zelkam {

void ZelkamMobileContentsPlugin::imagePicker(CallBackManagerPtr callBack)
{
    ZLog::debug(QStringLiteral("imagePicker(_:)"));
    setCurrentCallBack(callBack);
    const auto arguments = callBack->argumentDic();
    if (!arguments) {
        callBack->error(CommandStatus::INVALID_PARAM, false);
        return;
    }
    if (boolArgument(*arguments, QStringLiteral("multiselect")).value_or(false))
        showMultiImgPicker(*arguments);
    else
        showSingleImgPicker(*arguments);
}

void ZelkamMobileContentsPlugin::showSingleImgPicker(const QVariantMap &args)
{
    const auto comes = expectPicker();
    if (!comes)
        return;
    DispatchQueue::main().async([this, self = QPointer(this), args, comes] {
        if (!self)
            return;
        const auto screen = std::make_shared<ZelkamMobileSingleImagePicker>();
        m_imagePicker = screen;
        screen->imagePicker->setDelegate(asDelegate<UIImagePickerControllerDelegate>());
        if (boolArgument(args, QStringLiteral("camera")).value_or(false))
            screen->sourceType = UIImagePickerControllerSourceType::camera;
        screen->modalPresentationStyle = UIModalPresentationStyle::overFullScreen;
        presentPicker(screen, comes);
    });
}

void ZelkamMobileContentsPlugin::imagePickerController(
    UIImagePickerController *, const QVariantMap &didFinishPickingMediaWithInfo)
{
    print(QStringLiteral("imagePickerController(_:didFinishPickingMediaWithInfo:)"));
    pickerAnswers();
    const QVariant picked =
        didFinishPickingMediaWithInfo.value(UIImagePickerControllerOriginalImage);
    const auto image = UIImage::fromQImage(picked.value<QImage>());
    constexpr double quality = 0.5;
    const auto data = image ? UIImageJPEGRepresentation(*image, quality) : std::nullopt;
    const auto call = currentCallBack();
    if (call && data)
        call->success(
            QVariantMap{{QStringLiteral("image"), dataUrl(QStringLiteral("image/jpeg"), *data)}},
            false);
    else if (call)
        call->error(CommandStatus::UNKNOWN, QStringLiteral("Creating UIImage failed"), false);
    dismissSingleImgPicker();
}

void ZelkamMobileContentsPlugin::imagePickerControllerDidCancel(UIImagePickerController *)
{
    pickerAnswers();
    dismissSingleImgPicker();
    // The code and the words that pages know, though it is no file picker.
    if (const auto call = currentCallBack())
        call->error(QStringLiteral("2041"), QStringLiteral("File picker is canceled."), false);
}

void ZelkamMobileContentsPlugin::dismissSingleImgPicker()
{
    if (const auto screen = std::exchange(m_imagePicker, nullptr))
        screen->leave(true);
}

std::shared_ptr<ZelkamMobileSingleImagePicker>
ZelkamMobileContentsPlugin::currentImagePicker() const
{
    return m_imagePicker;
}

void ZelkamMobileContentsPlugin::setCurrentImagePicker(
    std::shared_ptr<ZelkamMobileSingleImagePicker> screen)
{
    m_imagePicker = std::move(screen);
}

} // namespace zelkam
