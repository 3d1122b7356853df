#pragma once

#include "platform/ui/preview_pane.h"
#include "platform/ui/ql_preview_item.h"
#include "platform/ui/ui_view_controller.h"

namespace zelkam {

/// Shows a local file: images (zoom, pan), PDF, text, audio and video; anything else as icon,
/// name, kind and size. HTML and scripts are shown as text. What cannot be read is said on
/// the screen. Files are opened on a worker thread, a file that is still being read shows that.
///
/// What a file is, its content decides together with its name.
class QLPreviewController : public UIViewController
{
    Q_OBJECT

public:
    QLPreviewController();
    ~QLPreviewController() override;

    /// What to show; asked when the view is loaded and by reloadData(). The controller holds the
    /// data source strongly for its whole life (the platform's does not), so the caller need not.
    void setDataSource(std::shared_ptr<QLPreviewControllerDataSource> dataSource);
    const std::shared_ptr<QLPreviewControllerDataSource> &dataSource() const { return m_source; }

    int currentPreviewItemIndex() const { return m_index; }
    /// Shows another item; an index out of range changes nothing.
    void setCurrentPreviewItemIndex(int index);

    void reloadData();

    void viewDidLoad() override;
    void viewDidDisappear(bool animated) override;

signals:
    /// The file is on the screen, or the reason why not. Not sent for an item that was replaced.
    void previewReady();

protected:
    QWidget *loadView() override;

private:
    std::shared_ptr<QLPreviewControllerDataSource> m_source;
    std::shared_ptr<QLPreviewItem> m_item;
    QPointer<PreviewPane> m_pane;
    int m_index = 0;
};

} // namespace zelkam
