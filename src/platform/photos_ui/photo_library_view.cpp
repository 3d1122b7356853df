#include "platform/photos_ui/photo_library_view.h"

#include "platform/photos/ph_photo_library.h"
#include "platform/photos/thumbnail_store.h"
#include "platform/photos_ui/photo_grid_view.h"
#include "platform/ui/file_info_view.h"
#include "platform/ui/layout_guide.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_document_picker_message.h"
#include "platform/ui/ui_navigation_bar.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QStackedWidget>
#include <QTimerEvent>

namespace zelkam {

namespace {

constexpr int barHeight = 44;

/// One for all screens, so that the next one finds the thumbnails that the last one had made.
ThumbnailStore &sharedThumbnails()
{
    static QPointer<ThumbnailStore> store;
    if (!store) {
        constexpr qint64 memory = 48LL << 20;
        store = new ThumbnailStore(ThumbnailDiskCache(), memory, QCoreApplication::instance());
    }
    return *store;
}

} // namespace

/// A sentence on a dark ground at the lower edge.
class PhotoLibraryView::Notice : public QWidget
{
public:
    explicit Notice(QWidget *parent) : QWidget(parent)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFont(themeFont(TextRole::body, font()));
        hide();
    }

    void setText(const QString &text)
    {
        m_text = text;
        setAccessibleName(text);
        update();
    }

    QSize sizeFor(int width) const
    {
        const int room = qMin(width - 4 * metrics::grid, 420);
        const QRect text = fontMetrics().boundingRect(QRect(0, 0, room - 4 * metrics::grid, 1000),
                                                      Qt::TextWordWrap, m_text);
        return {text.width() + 4 * metrics::grid + 2, text.height() + 3 * metrics::grid};
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0, 0, 0, 205));
        painter.drawRoundedRect(rect(), metrics::corner, metrics::corner);
        painter.setPen(Qt::white);
        painter.drawText(rect().adjusted(2 * metrics::grid, 0, -2 * metrics::grid, 0),
                         int(Qt::AlignCenter) | Qt::TextWordWrap, m_text);
    }

private:
    QString m_text;
};

/// Lies over the grid while photos are read, and takes its input. What takes longer than a moment
/// shows a bubble in the middle, in which a ring turns.
class PhotoLibraryView::BusyVeil : public QWidget
{
public:
    explicit BusyVeil(QWidget *parent) : QWidget(parent)
    {
        setAccessibleName(LoadingView::tr("Loading"));
        setFocusPolicy(Qt::StrongFocus);
        hide();
    }

protected:
    void showEvent(QShowEvent *) override
    {
        constexpr int tick = 40;
        m_clock.start();
        m_timer.start(tick, this);
    }
    void hideEvent(QHideEvent *) override { m_timer.stop(); }
    void timerEvent(QTimerEvent *) override { update(); }
    void mousePressEvent(QMouseEvent *event) override { event->accept(); }
    void paintEvent(QPaintEvent *) override
    {
        constexpr qint64 moment = 300; // milliseconds
        const qint64 time = m_clock.elapsed();
        if (time < moment)
            return;
        QPainter painter(this);
        QColor veil = palette().color(QPalette::Window);
        veil.setAlphaF(0.6F);
        painter.fillRect(rect(), veil);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0, 0, 0, 205));
        constexpr double bubble = 96;
        QRectF place(0, 0, bubble, bubble);
        place.moveCenter(QRectF(rect()).center());
        painter.drawRoundedRect(place, metrics::corner, metrics::corner);
        const QRectF ring = place.adjusted(28, 28, -28, -28);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(QColor(255, 255, 255, 70), 4));
        painter.drawEllipse(ring);
        painter.setPen(QPen(Qt::white, 4, Qt::SolidLine, Qt::RoundCap));
        drawBusyArc(painter, ring, 90, double(time) / 1200);
    }

private:
    QBasicTimer m_timer;
    QElapsedTimer m_clock;
};

PhotoLibraryView::PhotoLibraryView(bool hasDone)
    : m_cancel(std::make_shared<UIBarButtonItem>(UIBarButtonSystemItem::cancel, this,
                                                 [this](QObject *) { emit cancelled(); })),
      m_done(hasDone ? std::make_shared<UIBarButtonItem>(UIBarButtonSystemItem::done, this,
                                                         [this](QObject *) { emit accepted(); })
                     : nullptr),
      m_bar(new UINavigationBar(QRect(0, 0, 320, barHeight), this)),
      m_pages(new QStackedWidget(this)),
      m_grid(new PhotoGridView(sharedThumbnails())),
      m_message(new DocumentPickerMessage),
      m_notice(new Notice(this)),
      m_busy(new BusyVeil(this))
{
    m_pages->addWidget(m_message);
    m_pages->addWidget(m_grid);
    m_message->showLoading(tr("Looking for photos…"));
    setTitle(tr("Photos"));
    PHPhotoLibrary &library = PHPhotoLibrary::shared();
    connect(&library, &PHPhotoLibrary::changed, this, &PhotoLibraryView::showLibrary);
    library.open();
    if (library.isLoaded())
        showLibrary();
}

PhotoLibraryView::~PhotoLibraryView() = default;

void PhotoLibraryView::addCameraTile()
{
    m_grid->setHasCameraTile(true);
    if (PHPhotoLibrary::shared().isLoaded())
        showLibrary();
}

void PhotoLibraryView::setTitle(const QString &title)
{
    if (title == m_title)
        return;
    m_title = title;
    const auto item = std::make_shared<UINavigationItem>(title);
    item->leftBarButtonItem = m_cancel;
    item->rightBarButtonItem = m_done;
    m_bar->setItems({item}, false);
}

void PhotoLibraryView::setDoneEnabled(bool enabled)
{
    m_done->setEnabled(enabled);
}

void PhotoLibraryView::showLibrary()
{
    const PHPhotoLibrary &library = PHPhotoLibrary::shared();
    m_grid->setAssets(library.assets());
    if (m_grid->hasItems()) {
        m_pages->setCurrentWidget(m_grid);
    } else if (library.isUnavailable()) {
        m_message->showText(QStringLiteral("folder-pictures-symbolic"),
                            tr("There is no pictures folder"),
                            tr("It is missing, or cannot be read."));
        m_pages->setCurrentWidget(m_message);
    } else {
        m_message->showText(QStringLiteral("folder-pictures-symbolic"), tr("No photos yet"),
                            tr("Pictures in your pictures folder appear here."));
        m_pages->setCurrentWidget(m_message);
    }
    if (!std::exchange(m_ready, true))
        emit ready();
}

void PhotoLibraryView::showNotice(const QString &text)
{
    m_notice->setText(text);
    arrange();
    m_notice->show();
    m_notice->raise();
    constexpr int shown = 2500; // milliseconds
    m_noticeTime.start(shown, this);
}

void PhotoLibraryView::showBusy(bool busy)
{
    m_busy->setVisible(busy);
    m_busy->raise();
    // Before the grid loses it to the next control, which is Cancel: a second Enter is none.
    if (busy)
        m_busy->setFocus();
    m_grid->setEnabled(!busy);
    if (m_done)
        m_done->setEnabled(m_done->isEnabled() && !busy);
}

void PhotoLibraryView::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_noticeTime.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    m_noticeTime.stop();
    m_notice->hide();
}

void PhotoLibraryView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    arrange();
}

void PhotoLibraryView::arrange()
{
    const QRect room = rect().marginsRemoved(safeAreaInsets(this));
    m_bar->setGeometry(room.x(), room.y(), room.width(), barHeight);
    const QRect content = room.adjusted(0, barHeight, 0, 0);
    m_pages->setGeometry(content);
    m_busy->setGeometry(content);
    const QSize notice = m_notice->sizeFor(room.width());
    m_notice->setGeometry(QRect(QPoint(room.center().x() - notice.width() / 2,
                                       room.bottom() - 3 * metrics::grid - notice.height()),
                                notice));
}

void PhotoLibraryView::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), palette().color(QPalette::Window));
}

} // namespace zelkam
