#include "preview/preview_item.h"

namespace zelkam {

PreviewItem::PreviewItem(const URL &url, const QString &tittle) : m_url(url), m_title(tittle) {}

} // namespace zelkam
