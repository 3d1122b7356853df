#pragma once

#include "platform/ui/ql_preview_item.h"
#include "preview/preview_item.h"

#include <memory>

namespace zelkam {

/// Offers a preview controller exactly one item. The preview controller owns it. Main thread.
class PreviewDataSource : public QLPreviewControllerDataSource
{
public:
    /// There is no data source without an item.
    PreviewDataSource() = delete;
    /// @param previewItem  never null
    explicit PreviewDataSource(std::shared_ptr<PreviewItem> previewItem);

    const std::shared_ptr<PreviewItem> &previewItem() const { return m_previewItem; }

    /// Always 1.
    int numberOfPreviewItems(QLPreviewController *in) override;
    /// The item, whatever the index.
    std::shared_ptr<QLPreviewItem> previewController(QLPreviewController *controller,
                                                     int previewItemAt) override;

private:
    std::shared_ptr<PreviewItem> m_previewItem;
};

} // namespace zelkam
