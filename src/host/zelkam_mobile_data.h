#pragma once

#include <QHash>
#include <QString>
#include <optional>

namespace zelkam {

/// One web view's settings.
struct WebViewOptions
{
    /// The address of the server that the page came from, such as "https://example.org": the
    /// base of relative addresses, to which they are simply joined.
    QString realServerUrl;
};

/// The settings of all web views, by their identifier. Main thread only.
class ZelkamMobileData
{
public:
    static ZelkamMobileData &shared();

    /// The options of a web view; nothing when it is not known.
    std::optional<WebViewOptions> getOptions(const QString &webViewId) const;

    /// Sets the options of a web view; without options it is forgotten.
    void setOptions(const QString &webViewId, const std::optional<WebViewOptions> &options);

private:
    QHash<QString, WebViewOptions> m_options;
};

} // namespace zelkam
