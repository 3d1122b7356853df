#include "plugin/zelkam_mobile_contents_plugin.h"

#include "host/argument_values.h"
#include "host/zlog.h"
#include "platform/foundation/console.h"
#include "platform/foundation/dispatch_queue.h"
#include "platform/images/image_representation.h"
#include "plugin/data_url.h"
#include "plugin/zelkam_mobile_single_image_picker.h"

#include <QImage>

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
    DispatchQueue::main().async([weak = weak_from_this(), args] {
        const auto self = std::static_pointer_cast<ZelkamMobileContentsPlugin>(weak.lock());
        if (!self)
            return;
        const auto screen = std::make_shared<ZelkamMobileSingleImagePicker>();
        self->m_imagePicker = screen;
        screen->imagePicker->setDelegate(self);
        if (boolArgument(args, QStringLiteral("camera")).value_or(false))
            screen->sourceType = UIImagePickerControllerSourceType::camera;
        screen->modalPresentationStyle = UIModalPresentationStyle::overFullScreen;
        self->presentPicker(screen);
    });
}

void ZelkamMobileContentsPlugin::imagePickerController(
    UIImagePickerController *picker, const QVariantMap &didFinishPickingMediaWithInfo)
{
    print(QStringLiteral("imagePickerController(_:didFinishPickingMediaWithInfo:)"));
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
    dismissSingleImgPicker(*picker);
}

void ZelkamMobileContentsPlugin::imagePickerControllerDidCancel(UIImagePickerController *picker)
{
    dismissSingleImgPicker(*picker);
    // The code and the words that pages know, though it is no file picker.
    if (const auto call = currentCallBack())
        call->error(QStringLiteral("2041"), QStringLiteral("File picker is canceled."), false);
}

void ZelkamMobileContentsPlugin::dismissSingleImgPicker(UIImagePickerController &answered)
{
    // A later call may have taken the place of the screen that has answered now: with one of its
    // own above it, or with one that could not be shown because of it.
    answered.leave(true);
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
