#pragma once

#include "app/web_origin.h"

#include <QWebEnginePage>

namespace zelkam {

/// The page as a host for applications wants it: the console on standard output, no dialog where
/// nobody could answer it, links of other windows kept in this one.
class WebPage : public QWebEnginePage
{
    Q_OBJECT

public:
    /// @param attended  whether a person can answer dialogs; without one they are answered at
    ///     once (a question with "no") and told on standard error
    WebPage(QWebEngineProfile *profile, AllowedOrigins allowedOrigins, bool attended);

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

    const AllowedOrigins m_allowedOrigins;
    const bool m_attended;
};

} // namespace zelkam
