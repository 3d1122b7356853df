#include "host/zelkam_mobile_data.h"

namespace zelkam {

ZelkamMobileData &ZelkamMobileData::shared()
{
    static ZelkamMobileData data;
    return data;
}

std::optional<WebViewOptions> ZelkamMobileData::getOptions(const QString &webViewId) const
{
    const auto found = m_options.constFind(webViewId);
    if (found == m_options.constEnd())
        return std::nullopt;
    return *found;
}

void ZelkamMobileData::setOptions(const QString &webViewId,
                                  const std::optional<WebViewOptions> &options)
{
    if (options)
        m_options.insert(webViewId, *options);
    else
        m_options.remove(webViewId);
}

} // namespace zelkam
