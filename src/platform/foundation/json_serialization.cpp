#include "platform/foundation/json_serialization.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <cmath>

namespace zelkam {

namespace {

std::optional<QJsonValue> jsonValue(const QVariant &value);

std::optional<QJsonValue> jsonText(const QString &text)
{
    return text.isValidUtf16() ? std::optional(QJsonValue(text)) : std::nullopt;
}

std::optional<QJsonValue> jsonArray(const QVariantList &list)
{
    QJsonArray array;
    for (const QVariant &element : list) {
        const auto value = jsonValue(element);
        if (!value)
            return std::nullopt;
        array.append(*value);
    }
    return array;
}

std::optional<QJsonValue> jsonObject(const QVariantMap &map)
{
    QJsonObject object;
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        const auto value = jsonValue(it.value());
        if (!value || !it.key().isValidUtf16())
            return std::nullopt;
        object.insert(it.key(), *value);
    }
    return object;
}

std::optional<QJsonValue> jsonValue(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Nullptr:
        return QJsonValue(QJsonValue::Null);
    case QMetaType::Bool:
        return QJsonValue(value.toBool());
    case QMetaType::Int:
    case QMetaType::LongLong:
        return QJsonValue(value.toLongLong());
    case QMetaType::Double:
        return std::isfinite(value.toDouble()) ? std::optional(QJsonValue(value.toDouble()))
                                               : std::nullopt;
    case QMetaType::QString:
        return jsonText(value.toString());
    case QMetaType::QStringList:
    case QMetaType::QVariantList:
        return jsonArray(value.toList());
    case QMetaType::QVariantMap:
        return jsonObject(value.toMap());
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<QByteArray> jsonData(const QVariant &withJSONObject)
{
    const auto value = jsonValue(withJSONObject);
    if (!value)
        return std::nullopt;
    if (value->isObject())
        return QJsonDocument(value->toObject()).toJson(QJsonDocument::Compact);
    // A document holds objects and arrays only, so a fragment is written inside of an array.
    const QJsonArray wrapper{*value};
    const QByteArray bytes = QJsonDocument(wrapper).toJson(QJsonDocument::Compact);
    return bytes.mid(1, bytes.size() - 2);
}

} // namespace zelkam
