#pragma once

#include "host/call_back_manager.h"

#include <QList>
#include <QObject>
#include <QString>
#include <memory>

namespace zelkam {

class UIViewController;

/// What the plug-in asks of the web view that shows the calling page.
class HostWebView
{
public:
    virtual ~HostWebView() = default;

    /// Identifies the web view to ZelkamMobileData.
    virtual QString webViewId() const = 0;
};

/// The base of every plug-in. A plug-in is made with std::make_shared through makePlugin(), on
/// the main thread; downloads and screens that outlive a command share its ownership, and
/// whoever lets go last, on whatever thread, the object is destroyed on the main thread.
///
/// A command is a public method invokable by name that takes a CallBackManagerPtr:
/// the host calls the method "fileDownload" for the script command of that name.
class ZelkamMobilePlugin : public QObject, public std::enable_shared_from_this<ZelkamMobilePlugin>
{
    Q_OBJECT

public:
    ZelkamMobilePlugin();
    ~ZelkamMobilePlugin() override;

    /// The view controller that shows the calling page; null when there is none. A host sets
    /// these two, or overrides the getters. Main thread.
    virtual UIViewController *viewController() const;
    virtual HostWebView *webView() const;
    void setViewController(UIViewController *viewController);
    void setWebView(HostWebView *webView);

    /// To be called when the document that the plug-in serves is gone: all downloads that it
    /// started end, its screens go with what lies above them, and nothing of it is shown any more.
    /// Calls that it still holds get no reply, or an error. The view controller and the web view
    /// are forgotten; the plug-in takes no further commands. Main thread.
    void invalidate();
    bool isInvalidated() const { return m_isInvalidated; }

    /// Makes a screen one of the plug-in's, which go when it is invalidated. To be called before
    /// the screen is presented. Main thread.
    void addScreen(const std::shared_ptr<UIViewController> &screen);

    /// The call that replies go to at this moment; null when there is none. From any thread.
    virtual CallBackManagerPtr currentCallBack() const = 0;

signals:
    void invalidated();

private:
    bool m_isInvalidated = false;
    QList<std::weak_ptr<UIViewController>> m_screens;
    UIViewController *m_viewController = nullptr;
    HostWebView *m_webView = nullptr;
};

/// Deletes a plug-in on the main thread, whichever thread lets go of it.
void deletePluginOnMainThread(ZelkamMobilePlugin *plugin);

/// Makes a plug-in that is shared by the host and by what its commands started.
template<typename Plugin>
std::shared_ptr<Plugin> makePlugin()
{
    return std::shared_ptr<Plugin>(new Plugin, deletePluginOnMainThread);
}

} // namespace zelkam
