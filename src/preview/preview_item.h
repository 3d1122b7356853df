#pragma once

#include "platform/ui/ql_preview_item.h"

namespace zelkam {

/// The one file that the preview screen shows: where it lies and what it is called. Main thread.
class PreviewItem : public QLPreviewItem
{
public:
    /// There is no item without a file and a title.
    PreviewItem() = delete;
    /// @param tittle  the title that the preview shows
    PreviewItem(const URL &url, const QString &tittle);

    std::optional<URL> previewItemURL() const override { return m_url; }
    std::optional<QString> previewItemTitle() const override { return m_title; }
    void setPreviewItemURL(const std::optional<URL> &url) { m_url = url; }
    void setPreviewItemTitle(const std::optional<QString> &title) { m_title = title; }

private:
    std::optional<URL> m_url;
    std::optional<QString> m_title;
};

} // namespace zelkam
