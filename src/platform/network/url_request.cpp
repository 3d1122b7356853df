#include "platform/network/url_request.h"

#include <algorithm>

namespace zelkam {

void URLRequest::setValue(const std::optional<QString> &value, const QString &forHTTPHeaderField)
{
    const auto named = [&](const auto &header) {
        return header.first.compare(forHTTPHeaderField, Qt::CaseInsensitive) == 0;
    };
    if (!value) {
        m_headers.removeIf(named);
        return;
    }
    const auto it = std::find_if(m_headers.begin(), m_headers.end(), named);
    if (it != m_headers.end())
        *it = {forHTTPHeaderField, *value};
    else
        m_headers.append({forHTTPHeaderField, *value});
}

std::optional<QString> URLRequest::value(const QString &forHTTPHeaderField) const
{
    for (const auto &[name, value] : m_headers) {
        if (name.compare(forHTTPHeaderField, Qt::CaseInsensitive) == 0)
            return value;
    }
    return std::nullopt;
}

} // namespace zelkam
