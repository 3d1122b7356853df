#include "plugin/zelkam_mobile_contents_plugin.h"

#include "host/argument_values.h"
#include "host/plugin_reference.h"
#include "platform/foundation/dispatch_group.h"
#include "platform/photos/ph_image_manager.h"
#include "platform/photos_ui/image_grid_picker_controller.h"

#include <atomic>

namespace zelkam {

/// What the handlers of one pick share.
struct ZelkamMobileContentsPlugin::SeveralImages
{
    QVariantMap options;
    QVariantList results; ///< data URLs, in the order in which the handlers ran
    std::weak_ptr<ImageGridPickerController> picker;
    /// Held until the answer is there: calls that come meanwhile are answered by it.
    const std::shared_ptr<void> answer = std::make_shared<char>();
    std::atomic_bool isCancelled = false; ///< read by the threads that convert
};

void ZelkamMobileContentsPlugin::showMultiImgPicker(const QVariantMap &args)
{
    const auto comes = expectPicker();
    if (!comes)
        return;
    DispatchQueue::main().async([this, self = PluginReference(this), args, comes] {
        if (!self.get())
            return;
        const auto picker = std::make_shared<ImageGridPickerController>();
        if (const auto limit = integerArgument(args, QStringLiteral("maxcount")))
            picker->maxNumberOfSelections = *limit;
        picker->takePhotos = boolArgument(args, QStringLiteral("camera")).value_or(false);
        const auto images = std::make_shared<SeveralImages>();
        images->options = args;
        images->picker = picker;
        ImageGridPickerController::Handlers handlers;
        handlers.cancel = [this, self, images](const QList<PHAsset> &) {
            // Also after Done: what is still being read then replies nothing.
            images->isCancelled = true;
            if (!self.get())
                return;
            pickerAnswers();
            if (const auto call = currentCallBack())
                call->error(QStringLiteral("2045"), QStringLiteral("Image picker is canceled."),
                            false);
        };
        handlers.finish = [this, self, images](const QList<PHAsset> &assets) {
            if (self.get())
                convertImages(assets, images);
        };
        handlers.completion = [comes] {};
        if (UIViewController *presenter = presenterOfPicker(picker))
            picker->presentFrom(*presenter, true, std::move(handlers));
    });
}

void ZelkamMobileContentsPlugin::convertImages(const QList<PHAsset> &assets,
                                               const std::shared_ptr<SeveralImages> &images)
{
    const PluginReference self(this);
    m_pickerComes = images->answer;
    // Entered once, not once for each asset: only the last one's handler leaves it, and only when
    // it has something. The reply follows the last asset, whatever became of those before it.
    // Only the handlers hold the group, which holds the reply: a pick that never replies is let go
    // with the last of them.
    DispatchGroup group;
    group.enter();
    PHImageRequestOptions request;
    request.isNetworkAccessAllowed = true;
    request.sequence = PHImageManager::newSequence();
    for (qsizetype i = 0; i < assets.size(); ++i) {
        const bool last = i == assets.size() - 1;
        PHImageManager::defaultManager().requestPreparedImageData(
            assets.at(i), request,
            [this, self, images, group, last](const std::optional<QByteArray> &data,
                                              const std::optional<QString> &dataUTI) {
                const auto text =
                    images->isCancelled ? std::nullopt : getImgStr(data, dataUTI, images->options);
                return [this, self, images, group, last, text]() mutable {
                    if (images->isCancelled)
                        return;
                    if (last && !text && self.get())
                        pickerAnswers(); // by this error: no success follows
                    if (takeImage(self, *images, text) && last)
                        group.leave();
                    const auto picker = images->picker.lock();
                    if (picker && last)
                        picker->close();
                };
            });
    }
    group.notify(DispatchQueue::main(), [this, self, images] {
        if (self.get())
            pickerAnswers();
        const auto call = self.currentCallBack();
        if (!call)
            return;
        if (images->results.size() == 1)
            call->success(QVariantMap{{QStringLiteral("image"), images->results.first()}}, false);
        else
            call->success(images->results, false);
    });
}

bool ZelkamMobileContentsPlugin::takeImage(const PluginReference &self, SeveralImages &images,
                                           const std::optional<QByteArray> &text)
{
    if (!text) {
        if (const auto call = self.currentCallBack())
            call->error(QStringLiteral("2042"), QStringLiteral("File picker error."), false);
        return false;
    }
    images.results.append(*text);
    return true;
}

} // namespace zelkam
