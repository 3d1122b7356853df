#pragma once

#include "host/command_status.h"
#include "platform/foundation/url.h"

#include <QMetaType>
#include <QString>
#include <QVariant>
#include <functional>
#include <memory>
#include <optional>

namespace zelkam {

/// What the host offers to a command beyond the call itself.
class CommandDelegate
{
public:
    /// Maps the file URL of a file of the container to an address that the web view may load.
    using UrlTransformer = std::function<std::optional<URL>(const URL &)>;

    virtual ~CommandDelegate() = default;

    /// The host's transformer; empty when local addresses stay as they are.
    virtual UrlTransformer urlTransformer() const = 0;
};

/// One script call in progress: its arguments, and the way its replies go.
///
/// The host makes one for each call and hands it to the command as a shared pointer; whoever
/// holds it may still reply. The reply operations may be called from any thread, and the page
/// gets the replies in the order of these calls. A manager that goes away without a reply tells
/// the page so, with the status NO_REPLY: a page never waits for ever.
///
/// keepCallback tells the host whether further replies are meant to follow.
class CallBackManager
{
public:
    virtual ~CallBackManager() = default;

    /// The arguments as the page sent them; nothing when it sent none or no dictionary.
    ///
    /// A script's boolean arrives as bool, a number without a fraction that fits as qlonglong, any
    /// other as double, text as QString, an array as QVariantList, an object as QVariantMap, and
    /// null as nullptr_t. A value that none of these can hold arrives as UnrepresentableValue.
    virtual std::optional<QVariantMap> argumentDic() const = 0;

    /// The host's delegate, or null. Lives as long as the host.
    virtual CommandDelegate *commandDelegate() const = 0;

    virtual void success(bool keepCallback) = 0;
    /// The data is a record (QVariantMap), a list of records or of strings, or any other value
    /// that JSON can hold. A QByteArray in it is ASCII text: long text comes as one, as the host
    /// then passes it on without another copy.
    virtual void success(const QVariant &data, bool keepCallback) = 0;
    virtual void error(CommandStatus status, bool keepCallback) = 0;
    virtual void error(CommandStatus status, const QString &error, bool keepCallback) = 0;
    /// A status of the command's own, given as text.
    virtual void error(const QString &status, const QString &error, bool keepCallback) = 0;
};

using CallBackManagerPtr = std::shared_ptr<CallBackManager>;

/// Stands for a script value that has no counterpart here (a BigInt beyond 64 bits, say). It
/// counts as a value of the wrong type for every option, and no serialiser takes it.
struct UnrepresentableValue
{
};

} // namespace zelkam

Q_DECLARE_METATYPE(zelkam::UnrepresentableValue)
Q_DECLARE_METATYPE(zelkam::CallBackManagerPtr)
