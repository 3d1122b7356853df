#pragma once

#include "app/local_page.h"
#include "app/web_origin.h"

#include <QWebEngineUrlSchemeHandler>
#include <optional>

class QIODevice;

namespace zelkam {

class ScriptBridge;

/// Answers the addresses of the host's own scheme:
///
///   zelkam://bridge/session          opens a session for the document that asks
///   zelkam://bridge/replies/<token>  the replies that wait for it
///   zelkam://bridge/replies/<token>/<index>/<part>  part of a long text of those replies
///   zelkam://container/<path>        a file of the container
///   zelkam://app/<path>              the local page and its files
///
/// Who asks is the initiator that the web engine names; script cannot forge it. The first three
/// answer allowed origins only; the last answers itself and the host. Ranges are cut by the web
/// engine.
class HostSchemeHandler : public QWebEngineUrlSchemeHandler
{
    Q_OBJECT

public:
    /// Makes the scheme known to the web engine. Before the application object is made.
    static void registerScheme();

    HostSchemeHandler(ScriptBridge &bridge, std::optional<LocalPage> localPage);

    void requestStarted(QWebEngineUrlRequestJob *job) override;

private:
    void answerBridge(QWebEngineUrlRequestJob *job, const std::optional<WebOrigin> &initiator);
    void answerContainer(QWebEngineUrlRequestJob *job, const std::optional<WebOrigin> &initiator);
    void answerApp(QWebEngineUrlRequestJob *job, const std::optional<WebOrigin> &initiator);

    ScriptBridge &m_bridge;
    std::optional<LocalPage> m_localPage;
};

} // namespace zelkam
