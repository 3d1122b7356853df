#pragma once

#include "host/call_back_manager.h"

#include <QList>
#include <QObject>
#include <QString>
#include <memory>
#include <mutex>

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

/// The one place for the call that later replies go to. From any thread.
class CallSlot
{
public:
    CallBackManagerPtr call() const;
    void setCall(CallBackManagerPtr call);

private:
    mutable std::mutex m_mutex;
    CallBackManagerPtr m_call;
};

/// The base of every plug-in. It is made and ends on the main thread, and may be owned in any way.
/// Downloads and screens that outlive a command share its ownership where a std::shared_ptr owns
/// it; makePlugin() makes one so. Where its host owns it alone, replies are dropped after its end.
/// It must not end inside one of its own replies.
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
    CallBackManagerPtr currentCallBack() const;
    /// Also by its name, for a host. It has the form of a command and is none: a page must not
    /// reach it.
    Q_INVOKABLE void setCurrentCallBack(zelkam::CallBackManagerPtr callBack);

signals:
    void invalidated();

private:
    bool m_isInvalidated = false;
    QList<std::weak_ptr<UIViewController>> m_screens;
    friend class PluginReference;

    const std::shared_ptr<CallSlot> m_slot = std::make_shared<CallSlot>();
    UIViewController *m_viewController = nullptr;
    HostWebView *m_webView = nullptr;
};

/// Makes a plug-in that is shared by the host and by what its commands started.
template<typename Plugin>
std::shared_ptr<Plugin> makePlugin()
{
    return std::make_shared<Plugin>();
}

} // namespace zelkam
