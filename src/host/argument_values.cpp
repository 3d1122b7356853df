#include "host/argument_values.h"

namespace zelkam {

namespace {

template<typename T>
std::optional<T> exact(const QVariantMap &arguments, const QString &key)
{
    const auto found = arguments.constFind(key);
    if (found == arguments.cend() || found->metaType() != QMetaType::fromType<T>())
        return std::nullopt;
    return found->template value<T>();
}

} // namespace

std::optional<bool> boolArgument(const QVariantMap &arguments, const QString &key)
{
    return exact<bool>(arguments, key);
}

std::optional<QString> stringArgument(const QVariantMap &arguments, const QString &key)
{
    return exact<QString>(arguments, key);
}

std::optional<qint64> integerArgument(const QVariantMap &arguments, const QString &key)
{
    if (const auto value = exact<qlonglong>(arguments, key))
        return *value;
    if (const auto value = exact<int>(arguments, key))
        return *value;
    const auto value = exact<double>(arguments, key);
    // 2^63 itself is the first value beyond the range; NaN fails both comparisons.
    if (!value || !(*value >= -0x1p63 && *value < 0x1p63))
        return std::nullopt;
    const auto whole = static_cast<qint64>(*value);
    return static_cast<double>(whole) == *value ? std::optional(whole) : std::nullopt;
}

std::optional<double> numberArgument(const QVariantMap &arguments, const QString &key)
{
    if (const auto value = exact<double>(arguments, key))
        return *value;
    if (const auto value = exact<qlonglong>(arguments, key))
        return static_cast<double>(*value);
    if (const auto value = exact<int>(arguments, key))
        return *value;
    return std::nullopt;
}

std::optional<QVariantMap> dictionaryArgument(const QVariantMap &arguments, const QString &key)
{
    return exact<QVariantMap>(arguments, key);
}

std::optional<QMap<QString, QString>> textDictionaryArgument(const QVariantMap &arguments,
                                                             const QString &key)
{
    const auto dictionary = dictionaryArgument(arguments, key);
    if (!dictionary)
        return std::nullopt;
    QMap<QString, QString> texts;
    for (auto it = dictionary->cbegin(); it != dictionary->cend(); ++it) {
        const auto text = stringArgument(*dictionary, it.key());
        if (!text)
            return std::nullopt;
        texts.insert(it.key(), *text);
    }
    return texts;
}

} // namespace zelkam
