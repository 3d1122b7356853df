#include "host/plugin_reference.h"

#include "platform/foundation/dispatch_queue.h"

namespace zelkam {

namespace {

/// Shares the ownership of a plug-in that is shared; the last one to let go may be on any thread,
/// and the plug-in still ends on the main thread.
std::shared_ptr<ZelkamMobilePlugin> ownerOf(ZelkamMobilePlugin *plugin)
{
    auto shared = plugin ? plugin->weak_from_this().lock() : nullptr;
    if (!shared)
        return nullptr;
    return {plugin, [shared](ZelkamMobilePlugin *) mutable {
                if (!isMainThread())
                    DispatchQueue::main().async([last = std::move(shared)] {});
            }};
}

} // namespace

PluginReference::PluginReference(ZelkamMobilePlugin *plugin)
    : m_owner(ownerOf(plugin)), m_plugin(plugin), m_slot(plugin ? plugin->m_slot : nullptr)
{
}

CallBackManagerPtr PluginReference::currentCallBack() const
{
    return m_slot ? m_slot->call() : nullptr;
}

} // namespace zelkam
