#pragma once

#include <QMap>
#include <QString>
#include <QVariant>
#include <optional>

namespace zelkam {

// Reading one value of a call's arguments with a check of its type. A key that is missing and a
// value of another type give nothing; no type is converted into another, so a text "true" is not a
// boolean and a number 1 is not one either. Keys are compared exactly.

std::optional<bool> boolArgument(const QVariantMap &arguments, const QString &key);
std::optional<QString> stringArgument(const QVariantMap &arguments, const QString &key);
/// A whole number in the range of 64 bits. A script number without a fraction counts.
std::optional<qint64> integerArgument(const QVariantMap &arguments, const QString &key);
/// Any number.
std::optional<double> numberArgument(const QVariantMap &arguments, const QString &key);
std::optional<QVariantMap> dictionaryArgument(const QVariantMap &arguments, const QString &key);
/// A dictionary whose values are all text; one other value spoils the whole.
std::optional<QMap<QString, QString>> textDictionaryArgument(const QVariantMap &arguments,
                                                             const QString &key);

} // namespace zelkam
