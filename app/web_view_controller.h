#pragma once

#include "host/zelkam_mobile_plugin.h"
#include "platform/ui/ui_view_controller.h"

#include <QPointer>
#include <QUrl>

class QStackedWidget;
class QWebEngineLoadingInfo;
class QWebEngineView;

namespace zelkam {

class MessageScreen;
class WebPage;

/// The screen with the web page, and what stands in its place when it cannot be shown.
class WebViewController : public UIViewController, public HostWebView
{
    Q_OBJECT

public:
    /// @param page  shown by the view, which does not own it
    WebViewController(WebPage *page, QString webViewId);
    ~WebViewController() override;

    QString webViewId() const override { return m_webViewId; }

    void load(const QUrl &url);

signals:
    /// The page is there.
    void loaded();
    /// The page could not be loaded; the reason is a sentence for the log.
    void failed(const QUrl &url, const QString &reason);
    /// The process behind the page is gone, and the document with it.
    void crashed();

protected:
    QWidget *loadView() override;

private:
    void watchPage();
    void followLoad(const QWebEngineLoadingInfo &info);
    void showLoadFailure(const QUrl &url, const QString &reason);
    void showFailure(const QString &iconName, const QString &title, const QString &text);
    void showPage();

    QPointer<WebPage> m_page;
    QString m_webViewId;
    int m_loadSteps = 0;
    bool m_hasCrashed = false;
    QPointer<QStackedWidget> m_stack;
    QPointer<QWebEngineView> m_view;
    QPointer<MessageScreen> m_message;
};

} // namespace zelkam
