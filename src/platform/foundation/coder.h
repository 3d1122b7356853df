#pragma once

#include <QString>
#include <QVariantMap>
#include <utility>

namespace zelkam {

/// An archive that an object can be made from: values by their names.
class NSCoder
{
public:
    NSCoder() = default;
    explicit NSCoder(QVariantMap values) : m_values(std::move(values)) {}

    /// The value of this name; an invalid one where there is none.
    QVariant decodeObject(const QString &forKey) const { return m_values.value(forKey); }

private:
    QVariantMap m_values;
};

} // namespace zelkam
