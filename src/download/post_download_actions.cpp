// What the person sees of a download: the indicator, the toast, the preview. On the main queue.

#include "download/zelkam_mobile_file_download_util.h"

#include "host/visible_view_controller.h"
#include "host/zlog.h"
#include "platform/foundation/bundle.h"
#include "platform/foundation/console.h"
#include "platform/foundation/dispatch_queue.h"
#include "platform/foundation/file_name.h"
#include "platform/foundation/percent_encoding.h"
#include "platform/ui/ui_application.h"
#include "platform/ui/ui_window.h"
#include "preview/zelkam_mobile_contents_pre_view_vc.h"
#include "toast/toast.h"

namespace zelkam {

namespace {

const QString bundleIdentifier = QStringLiteral("zelkam.mobile.ZelkamMobileContents");
constexpr const char *toastMessageKey =
    QT_TRANSLATE_NOOP("zelkam.mobile.ZelkamMobileContents", "FILE_DOWNLOAD_TOAST_MESSAGE");

void setIndicator(bool visible)
{
    DispatchQueue::main().async(
        [visible] { UIApplication::shared().setNetworkActivityIndicatorVisible(visible); });
}

} // namespace

void ZelkamMobileFileDownloadUtil::showActivityIndicator() const
{
    setIndicator(true);
}

void ZelkamMobileFileDownloadUtil::hideActivityIndicator() const
{
    setIndicator(false);
}

void ZelkamMobileFileDownloadUtil::showNotify(const QString &name)
{
    print(QStringLiteral("showNotify(_:)"));
    DispatchQueue::main().async([self = shared_from_this(), name] { self->presentToast(name); });
}

void ZelkamMobileFileDownloadUtil::presentToast(const QString &name) const
{
    if (!m_showNotify || isAbandoned())
        return;
    const UIWindow *window = UIApplication::shared().keyWindow();
    UIViewController *top =
        window ? UIApplication::topViewController(window->rootViewController().get()) : nullptr;
    const auto bundle = Bundle::withIdentifier(bundleIdentifier);
    const QString key = QString::fromLatin1(toastMessageKey);
    QString text = bundle ? bundle->localizedString(key) : QString();
    // Without a translation the bundle gives the key, which nobody should read.
    if (text == key)
        text.clear();
    if (!top)
        return;
    makeToast(top->view(), displayName(name) + u' ' + text, std::chrono::milliseconds(500),
              ToastPosition::bottom, std::nullopt, std::nullopt, ToastManager::shared().style, {});
}

void ZelkamMobileFileDownloadUtil::showPreViewFile(const QString &name, const QString &path)
{
    print(QStringLiteral("showPreViewFile(_:_:)"));
    DispatchQueue::main().async(
        [self = shared_from_this(), name, path] { self->presentPreview(name, path); });
}

void ZelkamMobileFileDownloadUtil::presentPreview(const QString &name, const QString &path)
{
    if (isAbandoned())
        return;
    if (!m_fileOpen) {
        ZLog::debug(QStringLiteral("file open false"));
        replySuccess();
        return;
    }
    ZLog::debug(QStringLiteral("fileOpen:") + name + QStringLiteral(", target:") + path);
    UIViewController *visible = visibleViewController(UIApplication::shared());
    if (!visible) {
        replyError(CommandStatus::OBJECT_REFERENCE_FAILED, QStringLiteral("not found rootVC"));
        return;
    }
    const auto encoded = addingPercentEncodingForUrlQuery(QStringLiteral("file://") + path);
    const auto url = URL::fromString(encoded.value_or(QString()));
    if (!url) {
        replyError(CommandStatus::OBJECT_REFERENCE_FAILED, QStringLiteral("not found source url"));
        return;
    }
    const auto bundle = Bundle::withIdentifier(bundleIdentifier);
    const auto preview = std::make_shared<ZelkamMobileContentsPreViewVC>(
        QStringLiteral("ZelkamMobileContentsPreViewVC"), bundle ? &*bundle : nullptr);
    preview->modalPresentationStyle = UIModalPresentationStyle::overFullScreen;
    preview->pluginObj = pluginObj;
    preview->filePath = url;
    if (m_shareFile)
        preview->shareOpt = true;
    if (auto *plugin = pluginObj.get())
        plugin->addScreen(preview);
    visible->present(preview, true, [self = shared_from_this()] { self->replySuccess(); });
}

} // namespace zelkam
