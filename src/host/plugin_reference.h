#pragma once

#include "host/zelkam_mobile_plugin.h"

#include <QPointer>
#include <memory>

namespace zelkam {

/// A plug-in as the downloads and screens that it started hold it.
///
/// A plug-in that a std::shared_ptr owns is kept alive by it. One that its host owns by itself is
/// not: from its end on, replies to it are dropped. A reference is made on the main thread; it may
/// be copied and let go on any.
class PluginReference
{
public:
    PluginReference() = default;
    PluginReference(ZelkamMobilePlugin *plugin);
    template<typename Plugin>
    PluginReference(const std::shared_ptr<Plugin> &plugin) : PluginReference(plugin.get())
    {
    }

    /// The plug-in; null when it is gone, or there never was one. Main thread.
    ZelkamMobilePlugin *get() const { return m_plugin; }

    /// The call that the plug-in holds at this moment, or null. From any thread.
    CallBackManagerPtr currentCallBack() const;

private:
    std::shared_ptr<ZelkamMobilePlugin> m_owner;
    QPointer<ZelkamMobilePlugin> m_plugin;
    std::shared_ptr<CallSlot> m_slot;
};

} // namespace zelkam
