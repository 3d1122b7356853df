#pragma once

#include <QString>
#include <QVariantMap>
#include <optional>

namespace zelkam {

/// What a page's call carries, once it is read.
struct ScriptArguments
{
    /// The dictionary; nothing when the page sent none or something else.
    std::optional<QVariantMap> dictionary;
};

/// Reads the arguments of a call from the text that the injected script made of them: a JSON list
/// of one value. An object whose only key is the tag stands for a value that JSON has no form
/// for; the tag is random for each document, so that no page's own data can look like it.
/// The types are those of CallBackManager::argumentDic().
///
/// Nothing when the text is not such a list, or nests deeper than Qt's parser goes (1024).
std::optional<ScriptArguments> readScriptArguments(const QString &text, const QString &tag);

} // namespace zelkam
