#include "app/script_arguments.h"

#include "host/call_back_manager.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <limits>

namespace zelkam {

namespace {

/// The tagged values: "NaN", "Infinity", "-Infinity", or a BigInt's digits with an "n" behind.
QVariant taggedValue(const QString &form)
{
    if (form == u"NaN")
        return std::numeric_limits<double>::quiet_NaN();
    if (form == u"Infinity")
        return std::numeric_limits<double>::infinity();
    if (form == u"-Infinity")
        return -std::numeric_limits<double>::infinity();
    bool fits = false;
    const qlonglong integer = QStringView(form).chopped(form.isEmpty() ? 0 : 1).toLongLong(&fits);
    return fits ? QVariant(integer) : QVariant::fromValue(UnrepresentableValue());
}

QVariant fromJson(const QJsonValue &value, const QString &tag)
{
    if (value.isArray()) {
        const QJsonArray array = value.toArray();
        QVariantList list;
        list.reserve(array.size());
        for (const auto &item : array)
            list.append(fromJson(item, tag));
        return list;
    }
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        if (object.size() == 1 && object.constBegin().key() == tag)
            return taggedValue(object.constBegin().value().toString());
        QVariantMap map;
        for (auto it = object.constBegin(); it != object.constEnd(); ++it)
            map.insert(it.key(), fromJson(it.value(), tag));
        return map;
    }
    // A number written without fraction or exponent comes as qlonglong where it fits.
    return value.toVariant();
}

} // namespace

std::optional<ScriptArguments> readScriptArguments(const QString &text, const QString &tag)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8(), &error);
    if (error.error != QJsonParseError::NoError || !document.isArray() ||
        document.array().size() != 1)
        return std::nullopt;
    const QVariant value = fromJson(document.array().first(), tag);
    ScriptArguments arguments;
    if (value.metaType() == QMetaType::fromType<QVariantMap>())
        arguments.dictionary = value.toMap();
    return arguments;
}

} // namespace zelkam
