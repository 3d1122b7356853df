#pragma once

#include "host/zelkam_mobile_plugin.h"
#include "plugin/file_picker_return_type.h"

#include <QStringList>
#include <mutex>

namespace zelkam {

/// The content plug-in: the one object that a host makes, with a method for each script command.
///
/// Make it with makePlugin<ZelkamMobileContentsPlugin>(), set its view controller and web view,
/// and call a command by its name through the meta-object:
///
///     QMetaObject::invokeMethod(plugin.get(), "fileDownload",
///                               Q_ARG(zelkam::CallBackManagerPtr, call));
///
/// There is one slot for the current call: a command puts its call there before it does anything
/// else, and every later reply goes to the call that is there at that moment. A second command
/// that starts before the first has replied takes over the first one's replies.
///
/// Main thread only, but for currentCallBack().
class ZelkamMobileContentsPlugin : public ZelkamMobilePlugin
{
    Q_OBJECT
    Q_PROPERTY(
        zelkam::CallBackManagerPtr currentCallBack READ currentCallBack WRITE setCurrentCallBack)
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

    CallBackManagerPtr currentCallBack() const override; ///< from any thread
    void setCurrentCallBack(CallBackManagerPtr callBack);

private:
    QString getNomalizedURL(const QString &url) const;
    URL URLTransformer(const URL &origin) const;

    mutable std::mutex m_mutex; ///< guards the current call, which downloads read from their queues
    CallBackManagerPtr m_currentCallBack;
    qint64 m_fileMaxSelect = 1; ///< kept for whoever asks; it limits nothing
    QStringList m_allowExtensionArr;
    FilePickerReturnType m_filePickerReturnType = FilePickerReturnType::url;
};

} // namespace zelkam
