#include "plugin/zelkam_mobile_contents_plugin.h"

namespace zelkam {

URL ZelkamMobileContentsPlugin::URLTransformer(const URL &origin) const
{
    URL candidate = origin;
    if (!origin.absoluteString().startsWith(u"file"))
        candidate = URL::fromFilePath(origin.absoluteString());
    const auto call = currentCallBack();
    const CommandDelegate *delegate = call ? call->commandDelegate() : nullptr;
    const auto transformer =
        delegate ? delegate->urlTransformer() : CommandDelegate::UrlTransformer();
    const auto transformed = transformer ? transformer(candidate) : std::nullopt;
    // Without a transformer the page gets what was there before, not the candidate.
    return transformed.value_or(origin);
}

} // namespace zelkam
