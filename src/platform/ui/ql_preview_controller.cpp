#include "platform/ui/ql_preview_controller.h"

#include "platform/ui/preview_pane.h"

namespace zelkam {

QLPreviewController::QLPreviewController() = default;
QLPreviewController::~QLPreviewController() = default;

void QLPreviewController::setDataSource(std::shared_ptr<QLPreviewControllerDataSource> dataSource)
{
    m_source = std::move(dataSource);
    m_index = 0;
    if (isViewLoaded())
        reloadData();
}

void QLPreviewController::setCurrentPreviewItemIndex(int index)
{
    if (!m_source || index == m_index || index < 0 || index >= m_source->numberOfPreviewItems(this))
        return;
    m_index = index;
    if (isViewLoaded())
        reloadData();
}

void QLPreviewController::reloadData()
{
    const bool any = m_source && m_index < m_source->numberOfPreviewItems(this);
    m_item = any ? m_source->previewController(this, m_index) : nullptr;
    if (!isViewLoaded())
        return;
    if (m_item)
        m_pane->showFile(m_item->previewItemURL(), m_item->previewItemTitle());
    else
        m_pane->showNothing();
}

QWidget *QLPreviewController::loadView()
{
    m_pane = new PreviewPane;
    connect(m_pane, &PreviewPane::ready, this, &QLPreviewController::previewReady);
    return m_pane;
}

void QLPreviewController::viewDidLoad()
{
    UIViewController::viewDidLoad();
    reloadData();
}

void QLPreviewController::viewDidDisappear(bool animated)
{
    UIViewController::viewDidDisappear(animated);
    m_pane->pausePlayback();
}

} // namespace zelkam
