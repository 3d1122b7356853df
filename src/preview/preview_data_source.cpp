#include "preview/preview_data_source.h"

#include <utility>

namespace zelkam {

PreviewDataSource::PreviewDataSource(std::shared_ptr<PreviewItem> previewItem)
    : m_previewItem(std::move(previewItem))
{
}

int PreviewDataSource::numberOfPreviewItems(QLPreviewController * /*in*/)
{
    return 1;
}

std::shared_ptr<QLPreviewItem>
PreviewDataSource::previewController(QLPreviewController * /*controller*/, int /*previewItemAt*/)
{
    return m_previewItem;
}

} // namespace zelkam
