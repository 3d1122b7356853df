#pragma once

#include <QList>
#include <QString>
#include <QUrl>
#include <optional>

namespace zelkam {

/// The scheme that the host serves itself: its session and reply addresses, the files of the
/// container, and a local page.
inline constexpr char hostScheme[] = "zelkam";

/// The origin of a page as RFC 6454 has it: scheme, host and port, compared exactly. Only http,
/// https and the host's own scheme have one here; file, data and about pages, and documents in a
/// sandbox, are opaque and therefore never equal to anything.
class WebOrigin
{
public:
    /// The origin of a URL, with the scheme's default port written out and the host in its ASCII
    /// form. Nothing for an opaque origin.
    static std::optional<WebOrigin> fromUrl(const QUrl &url);

    /// Parses "scheme://host[:port]" as a person writes it; one slash may follow. Nothing when
    /// there is more (a path, a user name), a wildcard, or a scheme other than http and https.
    static std::optional<WebOrigin> fromText(const QString &text);

    /// Whether it is a server's: http or https.
    bool isWeb() const { return m_scheme != QLatin1String(hostScheme); }

    /// As a page's location.origin has it: without the default port.
    QString toString() const;

    friend bool operator==(const WebOrigin &, const WebOrigin &) = default;

private:
    QString m_scheme;
    QString m_host;
    int m_port = -1;
};

/// The origins whose main-frame pages may call commands and read the container's files.
using AllowedOrigins = QList<WebOrigin>;

} // namespace zelkam
