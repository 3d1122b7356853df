#include "preview/zelkam_mobile_contents_pre_view_vc.h"

#include "platform/foundation/console.h"
#include "platform/foundation/file_name.h"
#include "platform/foundation/system_version.h"
#include "platform/ui/layout_guide.h"
#include "platform/ui/ql_preview_controller.h"
#include "platform/ui/ui_activity_view_controller.h"
#include "platform/ui/ui_bar_button_item.h"
#include "platform/ui/ui_device.h"
#include "platform/ui/ui_navigation_bar.h"
#include "preview/preview_data_source.h"

#include <QPainter>

namespace zelkam {

namespace {

constexpr int barHeight = 44;
/// A strip of 6 points is left free between the bar and the preview.
constexpr int previewTop = 50;

} // namespace

/// The screen's own view. While the screen slides in, when it has no bar yet, it draws the picture
/// of the one that is to come.
class ZelkamMobileContentsPreViewVC::Sheet : public QWidget
{
public:
    explicit Sheet(ZelkamMobileContentsPreViewVC &screen) : m_screen(screen)
    {
        setAutoFillBackground(true);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        if (!m_screen.filePath || !m_screen.children().isEmpty())
            return;
        if (m_bar.isNull() || m_barWidth != width()) {
            UINavigationBar bar(QRect(0, 0, width(), barHeight));
            bar.setPalette(palette());
            bar.setFont(font());
            bar.setItems({m_screen.navigationItem()}, false);
            m_bar = bar.grab();
            m_barWidth = width();
        }
        QPainter(this).drawPixmap(0, m_screen.safeAreaInsets().top(), m_bar);
    }

private:
    ZelkamMobileContentsPreViewVC &m_screen;
    QPixmap m_bar;
    int m_barWidth = 0;
};

ZelkamMobileContentsPreViewVC::ZelkamMobileContentsPreViewVC(std::optional<QString> nibName,
                                                             const Bundle *bundle)
    : UIViewController(std::move(nibName), bundle)
{
}

ZelkamMobileContentsPreViewVC::ZelkamMobileContentsPreViewVC(const NSCoder &coder)
    : UIViewController(coder)
{
}

ZelkamMobileContentsPreViewVC::~ZelkamMobileContentsPreViewVC() = default;

QWidget *ZelkamMobileContentsPreViewVC::loadView()
{
    return new Sheet(*this);
}

void ZelkamMobileContentsPreViewVC::viewDidLoad()
{
    UIViewController::viewDidLoad();
    setNeedsStatusBarAppearanceUpdate();
}

void ZelkamMobileContentsPreViewVC::viewDidAppear(bool animated)
{
    UIViewController::viewDidAppear(animated);
    const auto preview = std::make_shared<QLPreviewController>();
    if (!filePath) {
        print(QStringLiteral("file path is nil"));
        return;
    }
    const QString name = filePath->lastPathComponent();
    const auto item = std::make_shared<PreviewItem>(*filePath, name);
    preview->setDataSource(std::make_shared<PreviewDataSource>(item));
    addChild(preview);
    preview->view()->setParent(view());

    auto *bar =
        new UINavigationBar(QRect(0, safeAreaInsets().top(), view()->width(), barHeight), view());
    bar->setItems({navigationItem()}, true);

    pinToSafeArea(preview->view(), QMargins(0, previewTop, 0, 0));
    preview->view()->show();
    bar->show();
    bar->raise();
    preview->didMove(this);
    // The keys are for what is read, not for the first button.
    preview->view()->setFocus();
    removeOldestPreview();
}

std::shared_ptr<UINavigationItem> ZelkamMobileContentsPreViewVC::navigationItem()
{
    const auto item =
        std::make_shared<UINavigationItem>(displayName(filePath->lastPathComponent()));
    item->titleElision = Qt::ElideMiddle;
    item->leftBarButtonItem = std::make_shared<UIBarButtonItem>(
        UIBarButtonSystemItem::done, this, [this](QObject *sender) { onTapDone(sender); });
    if (shareOpt) {
        item->rightBarButtonItem = std::make_shared<UIBarButtonItem>(
            UIBarButtonSystemItem::action, this, [this](QObject *sender) { onTapShare(sender); });
    }
    return item;
}

void ZelkamMobileContentsPreViewVC::removeOldestPreview()
{
    ZelkamMobileContentsPreViewVC *oldest = this;
    int count = 1;
    for (auto *below = presentingViewController(); below;
         below = below->presentingViewController()) {
        if (auto *preview = qobject_cast<ZelkamMobileContentsPreViewVC *>(below)) {
            oldest = preview;
            ++count;
        }
    }
    if (count > mostPreviews)
        oldest->removeFromBelow();
}

void ZelkamMobileContentsPreViewVC::onTapDone(QObject * /*sender*/)
{
    if (auto *presenter = presentingViewController())
        presenter->dismiss(true);
}

void ZelkamMobileContentsPreViewVC::onTapShare(QObject *sender)
{
    QList<URL> items;
    if (filePath)
        items.append(*filePath);
    const auto sheet = std::make_shared<UIActivityViewController>(items);
    if (UIDevice::current().userInterfaceIdiom() == UIUserInterfaceIdiom::pad) {
        auto *button = qobject_cast<UIBarButtonItem *>(sender);
        if (auto *popover = sheet->popoverPresentationController()) {
            if (isSystemVersionAtLeast(16, 0))
                popover->setSourceItem(button);
            else
                popover->setBarButtonItem(button);
        }
    }
    present(sheet, true);
}

} // namespace zelkam
