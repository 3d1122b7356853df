#pragma once

#include "app/web_origin.h"

#include <QWebEnginePage>
#include <QWebEngineUrlRequestInterceptor>
#include <functional>

namespace zelkam {

/// Hands the requests of a page to a function. Main thread.
class RequestWatch : public QWebEngineUrlRequestInterceptor
{
public:
    using Function = std::function<void(QWebEngineUrlRequestInfo &)>;

    RequestWatch(Function function, QObject *parent)
        : QWebEngineUrlRequestInterceptor(parent), m_function(std::move(function))
    {
    }
    void interceptRequest(QWebEngineUrlRequestInfo &info) override { m_function(info); }

private:
    Function m_function;
};

/// The page as a host for applications wants it: the console on standard output, no dialog where
/// nobody could answer it, links of other windows kept in this one.
///
/// An address that a page names is never loaded by the host itself, but by the document that is
/// there: only then do the web engine, and the server, know who asks.
class WebPage : public QWebEnginePage
{
    Q_OBJECT

public:
    /// @param attended  whether a person can answer dialogs; without one they are answered at
    ///     once (a question with "no") and told on standard error
    WebPage(QWebEngineProfile *profile, AllowedOrigins allowedOrigins, bool attended);

    /// Tries the last load of the window again, which failed, as if whoever began it did so once
    /// more. False when that was a frame, for which the page cannot speak: then nothing happens.
    bool retry();

protected:
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString &message,
                                  int lineNumber, const QString &sourceId) override;
    void javaScriptAlert(const QUrl &origin, const QString &message) override;
    bool javaScriptConfirm(const QUrl &origin, const QString &message) override;
    bool javaScriptPrompt(const QUrl &origin, const QString &message, const QString &defaultValue,
                          QString *result) override;

private:
    void answerPermission(const QUrl &origin, QWebEnginePage::Feature feature);
    void openWindow(QWebEngineNewWindowRequest &request);
    void openInPlace(QWebEngineNewWindowRequest &request);
    void noteLoad(const QWebEngineUrlRequestInfo &info);
    void follow(const QUrl &url);
    bool isAllowed(const QUrl &url) const;

    const AllowedOrigins m_allowedOrigins;
    const bool m_attended;
    QUrl m_lastLoad;             ///< what the window was to show last
    bool m_lastLoadIsOwn = true; ///< whether the host or the page itself began it
};

} // namespace zelkam
