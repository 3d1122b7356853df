#pragma once

#include "host/zelkam_mobile_plugin.h"
#include "platform/foundation/ut_type.h"
#include "platform/photos_ui/ui_image_picker_controller.h"
#include "platform/ui/ui_document_picker_view_controller.h"
#include "plugin/file_picker_return_type.h"

#include <QStringList>
#include <memory>

namespace zelkam {

class PHAsset;
class PluginReference;
class ZelkamMobileSingleImagePicker;

/// The content plug-in: the one object that a host makes, with a method for each script command.
///
/// Make it in any way, set its view controller and web view, and call a command by its name through
/// the meta-object:
///
///     QMetaObject::invokeMethod(&plugin, "fileDownload",
///                               Q_ARG(zelkam::CallBackManagerPtr, call));
///
/// There is one slot for the current call: a command puts its call there before it does anything
/// else, and every later reply goes to the call that is there at that moment. A second command
/// that starts before the first has replied takes over the first one's replies.
///
/// Main thread only, but for currentCallBack().
class ZelkamMobileContentsPlugin : public ZelkamMobilePlugin,
                                   public UIDocumentPickerDelegate,
                                   public UIImagePickerControllerDelegate
{
    Q_OBJECT
    Q_PROPERTY(
        zelkam::CallBackManagerPtr currentCallBack READ currentCallBack WRITE setCurrentCallBack)
    Q_PROPERTY(std::shared_ptr<zelkam::ZelkamMobileSingleImagePicker> imagePicker READ
                   currentImagePicker WRITE setCurrentImagePicker)
    Q_PROPERTY(qint64 fileMaxSelect MEMBER m_fileMaxSelect)
    Q_PROPERTY(QStringList allowExtensionArr MEMBER m_allowExtensionArr)

public:
    ZelkamMobileContentsPlugin();
    ~ZelkamMobileContentsPlugin() override;

    /// Downloads a file: "url" is where from, further options are those of the download engine
    /// (ZelkamMobileFileDownloadUtil), which replies.
    ///
    /// A relative "url" is joined to the web view's realServerUrl, with a "/" between them unless
    /// it begins with one. The address is percent-decoded once and encoded again, so that it may
    /// come encoded, half encoded or not encoded. Replies INVALID_PARAM when there is no "url", or
    /// no URL can be made of it.
    Q_INVOKABLE void fileDownload(zelkam::CallBackManagerPtr callBack);

    /// Lets the person pick documents. Options:
    ///
    ///     extension    string: what may be picked, as "pdf,png"; anything when none is known
    ///     multiselect  boolean: whether several may be picked
    ///     maxcount     integer: kept in fileMaxSelect; it limits nothing
    ///     type         integer, may be missing: 0 for base64, another for url; stays for the
    ///                  calls that follow
    ///
    /// Replies INVALID_PARAM when one of the first three is missing or of another type, and
    /// OBJECT_CREATION_FAILED when there can be no picker. Otherwise the picker's result replies:
    /// a cancel is a success without data; what could not be copied is FILE_NOT_FOUND, or is
    /// missing among several. The main thread copies and encodes, and waits for it.
    Q_INVOKABLE void filePicker(zelkam::CallBackManagerPtr callBack);

    /// Lets the person take a photo, or pick one or several. Options:
    ///
    ///     multiselect    boolean: several photos; without it one, as JPEG of quality 0.5, and of
    ///                    the others only "camera" counts
    ///     camera         boolean: for one, the camera in place of the library; for several, a tile
    ///                    in the library that takes one
    ///     maxcount       integer: how many can be selected; any number when zero or less
    ///     resizeWidth,
    ///     resizeHeight   numbers, points: each photo is stretched to this size when both are
    ///                    given and positive
    ///     resizeQuality  number, 0.0 to 1.0: of JPEG; more than 1.0 counts as 0.5
    ///
    /// An option of another type counts as missing. Replies INVALID_PARAM without arguments; one
    /// photo as {"image": data URL}, more as a list of data URLs. PNG stays PNG, everything else
    /// becomes JPEG. Each of several that cannot be converted is one error "2042"; the success
    /// follows when the last one has been converted, and does not come when that one failed.
    Q_INVOKABLE void imagePicker(zelkam::CallBackManagerPtr callBack);

    void imagePickerController(UIImagePickerController *picker,
                               const QVariantMap &didFinishPickingMediaWithInfo) override;
    void imagePickerControllerDidCancel(UIImagePickerController *picker) override;

    /// The screen of the single picker while it is shown: the property imagePicker.
    std::shared_ptr<ZelkamMobileSingleImagePicker> currentImagePicker() const;
    void setCurrentImagePicker(std::shared_ptr<ZelkamMobileSingleImagePicker> screen);

    void documentPicker(UIDocumentPickerViewController *controller,
                        const QList<URL> &didPickDocumentsAt) override;
    void documentPickerWasCancelled(UIDocumentPickerViewController *controller) override;

    /// How the last filePicker call, or one before it that said so, returns its files.
    FilePickerReturnType filePickerReturnType() const { return m_filePickerReturnType; }

private:
    /// This object as a delegate, which pickers hold weakly. One that a std::shared_ptr owns is
    /// kept alive for the length of an answer.
    template<typename Delegate>
    std::weak_ptr<Delegate> asDelegate();

    QString getNomalizedURL(const QString &url) const;
    URL URLTransformer(const URL &origin) const;

    /// Gives what is to live until the picker of a new call is on the screen, or cannot be. Null
    /// when there is one already, or on its way, that has not answered and is not leaving: it
    /// answers the new call, and no other is to come.
    std::shared_ptr<void> expectPicker();
    /// To be called first of all when a picker has its answer.
    void pickerAnswers();
    /// Where a picker comes from: the top-most screen above the page, as a preview may still be
    /// open there. When that one is leaving, the picker comes as soon as it has left. Null without
    /// a page.
    UIViewController *presenterOfPicker(const std::shared_ptr<UIViewController> &picker);
    /// Shows a picker; without a page nothing is shown and nothing is replied.
    void presentPicker(const std::shared_ptr<UIViewController> &picker,
                       const std::shared_ptr<void> &comes);

    QList<UTType> getAllowUTType() const;
    QStringList getAllowDocumentTypes() const;
    std::shared_ptr<UIDocumentPickerViewController> makeDocumentPicker() const;
    void presentDocumentPicker(const CallBackManagerPtr &callBack, bool multiselect,
                               const std::shared_ptr<void> &comes);

    std::optional<URL> copyPickedFile(const URL &url) const;
    std::optional<QString> localFilePath(const URL &url) const;
    std::optional<QByteArray> localFileBase64String(const URL &url) const;
    static QVariantMap pickedFileRecord(const URL &url, const std::optional<QByteArray> &data);
    void replyPicked(const QVariant &data) const;

    struct SeveralImages;
    void showSingleImgPicker(const QVariantMap &args);
    void showMultiImgPicker(const QVariantMap &args);
    void dismissSingleImgPicker();
    void convertImages(const QList<PHAsset> &assets, const std::shared_ptr<SeveralImages> &images);
    static bool takeImage(const PluginReference &self, SeveralImages &images,
                          const std::optional<QByteArray> &text);
    /// From any thread.
    static std::optional<QByteArray> getImgStr(const std::optional<QByteArray> &data,
                                               const std::optional<QString> &uti,
                                               const std::optional<QVariantMap> &options);

    const std::shared_ptr<void> m_life = std::make_shared<char>(); ///< owned by this object alone
    std::weak_ptr<UIViewController> m_picker;                      ///< until it answers
    std::weak_ptr<void> m_pickerComes; ///< lives until it is on the screen, or is refused
    std::shared_ptr<ZelkamMobileSingleImagePicker> m_imagePicker;
    qint64 m_fileMaxSelect = 1; ///< kept for whoever asks; it limits nothing
    QStringList m_allowExtensionArr;
    FilePickerReturnType m_filePickerReturnType = FilePickerReturnType::url;
};

template<typename Delegate>
std::weak_ptr<Delegate> ZelkamMobileContentsPlugin::asDelegate()
{
    if (const auto shared = weak_from_this().lock())
        return std::static_pointer_cast<ZelkamMobileContentsPlugin>(shared);
    return std::shared_ptr<Delegate>(m_life, this);
}

} // namespace zelkam
