#pragma once

#include "platform/foundation/url.h"

#include <QString>
#include <memory>
#include <optional>

namespace zelkam {

class QLPreviewController;

/// One file to be previewed.
class QLPreviewItem
{
public:
    virtual ~QLPreviewItem() = default;
    /// Where the file lies; without one, the preview says that there is nothing to show.
    virtual std::optional<URL> previewItemURL() const = 0;
    /// The name that the preview shows; absent, the file's own is shown.
    virtual std::optional<QString> previewItemTitle() const = 0;
};

/// Tells a preview controller what to show. Called on the main thread.
class QLPreviewControllerDataSource
{
public:
    virtual ~QLPreviewControllerDataSource() = default;
    virtual int numberOfPreviewItems(QLPreviewController *in) = 0;
    virtual std::shared_ptr<QLPreviewItem> previewController(QLPreviewController *controller,
                                                             int previewItemAt) = 0;
};

} // namespace zelkam
