#include "plugin/zelkam_mobile_contents_plugin.h"

#include "host/argument_values.h"
#include "host/plugin_reference.h"
#include "host/zlog.h"
#include "platform/foundation/dispatch_queue.h"
#include "platform/foundation/system_version.h"

namespace zelkam {

void ZelkamMobileContentsPlugin::filePicker(CallBackManagerPtr callBack)
{
    ZLog::debug(QStringLiteral("filePicker(_:)"));
    setCurrentCallBack(callBack);
    const auto arguments = callBack->argumentDic().value_or(QVariantMap());
    const auto extensions = stringArgument(arguments, QStringLiteral("extension"));
    const auto multiselect = boolArgument(arguments, QStringLiteral("multiselect"));
    const auto maxCount = integerArgument(arguments, QStringLiteral("maxcount"));
    if (!extensions || !multiselect || !maxCount) {
        callBack->error(CommandStatus::INVALID_PARAM, false);
        return;
    }
    m_fileMaxSelect = *maxCount;
    // Nothing is trimmed: " png" is an extension that nothing has.
    m_allowExtensionArr = extensions->split(u',', Qt::SkipEmptyParts);
    // Without "type", a call returns its files the way the one before did.
    if (const auto type = integerArgument(arguments, QStringLiteral("type")))
        m_filePickerReturnType =
            *type == 0 ? FilePickerReturnType::base64 : FilePickerReturnType::url;

    DispatchQueue::main().async([this, self = PluginReference(this), callBack,
                                 multiselect = *multiselect, comes = expectPicker()] {
        if (self.get())
            presentDocumentPicker(callBack, multiselect, comes);
    });
}

void ZelkamMobileContentsPlugin::presentDocumentPicker(const CallBackManagerPtr &callBack,
                                                       bool multiselect,
                                                       const std::shared_ptr<void> &comes)
{
    const auto picker = makeDocumentPicker();
    if (!picker) {
        callBack->error(CommandStatus::OBJECT_CREATION_FAILED,
                        QStringLiteral("fileBrowser init failed"), false);
        return;
    }
    if (!comes)
        return;
    picker->allowsMultipleSelection = multiselect;
    picker->setDelegate(asDelegate<UIDocumentPickerDelegate>());
    picker->modalPresentationStyle = UIModalPresentationStyle::overFullScreen;
    presentPicker(picker, comes);
}

std::shared_ptr<UIDocumentPickerViewController>
ZelkamMobileContentsPlugin::makeDocumentPicker() const
{
    if (!UIDocumentPickerViewController::isAvailable())
        return nullptr;
    // When no extension is known, anything may be picked.
    if (isSystemVersionAtLeast(14, 0)) {
        QList<UTType> types = getAllowUTType();
        if (types.isEmpty())
            types = {UTType::item};
        return std::make_shared<UIDocumentPickerViewController>(types, true);
    }
    QStringList types = getAllowDocumentTypes();
    if (types.isEmpty())
        types = QStringList{kUTTypeItem};
    return std::make_shared<UIDocumentPickerViewController>(types, UIDocumentPickerMode::import);
}

} // namespace zelkam
