#include "platform/ui/preview_pane.h"

#include "platform/foundation/background_work.h"
#include "platform/foundation/dispatch_queue.h"
#include "platform/foundation/file_name.h"
#include "platform/ui/file_info_view.h"
#include "platform/ui/image_view.h"
#include "platform/ui/media_view.h"
#include "platform/ui/pdf_view.h"
#include "platform/ui/preview_content.h"
#include "platform/ui/text_view.h"
#include "platform/ui/theme.h"

#include <QApplication>
#include <QPainter>

namespace zelkam {

namespace {

/// No honest file takes so long on any machine; a dishonest one would for ever.
constexpr std::chrono::seconds patience{20};

QString sentence(const char *text)
{
    return QCoreApplication::translate("QLPreviewController", text);
}

} // namespace

/// Lies over what is shown and outlines it while keys go there, for a person who uses them.
class PreviewPane::FocusFrame : public QWidget
{
public:
    explicit FocusFrame(PreviewPane &pane) : QWidget(&pane), m_pane(pane)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        connect(qApp, &QApplication::focusChanged, this, qOverload<>(&QWidget::update));
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const QWidget *shown = m_pane.m_shown;
        if (!shown || !shown->hasFocus() || !window()->testAttribute(Qt::WA_KeyboardFocusChange))
            return;
        QPainter painter(this);
        painter.setPen(QPen(accentColor(palette()), 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }

private:
    PreviewPane &m_pane;
};

PreviewPane::PreviewPane(QWidget *parent) : QWidget(parent), m_frame(new FocusFrame(*this))
{
    setAutoFillBackground(true);
    m_patience.setSingleShot(true);
    warmUpDecoders();
}

PreviewPane::~PreviewPane()
{
    m_reading.cancel();
}

void PreviewPane::showFile(const std::optional<URL> &url, const std::optional<QString> &title)
{
    const int generation = ++m_generation;
    m_reading.cancel();
    m_reading = DecodeCancel();
    setShown(new LoadingView(this));

    m_patience.disconnect(this);
    connect(&m_patience, &QTimer::timeout, this, [this, url, title] {
        ++m_generation;
        m_reading.cancel();
        PreviewContent content;
        content.file.name = title.value_or(url ? url->lastPathComponent() : QString());
        content.problem = sentence("The file takes too long to open.");
        showContent(std::move(content));
    });
    m_patience.start(patience);

    runInBackground([url, title, generation, cancel = m_reading, self = QPointer(this)] {
        auto content = std::make_shared<PreviewContent>(loadPreview(url, cancel));
        if (title)
            content->file.name = *title;
        DispatchQueue::main().async([content, generation, self] {
            if (self && self->m_generation == generation)
                self->showContent(std::move(*content));
        });
    });
}

void PreviewPane::showNothing()
{
    ++m_generation;
    m_reading.cancel();
    PreviewContent content;
    content.problem = sentence("There is nothing to show.");
    showContent(std::move(content));
}

void PreviewPane::pausePlayback()
{
    if (auto *media = qobject_cast<MediaView *>(m_shown))
        media->pause();
}

void PreviewPane::showContent(PreviewContent content)
{
    m_patience.stop();
    if (!content.file.name.isEmpty())
        content.file.name = displayName(content.file.name);
    setShown(makeView(content));
    emit ready();
}

QWidget *PreviewPane::makeView(PreviewContent &content)
{
    switch (content.kind) {
    case PreviewContent::Kind::image:
    case PreviewContent::Kind::animation: {
        auto *view = new ImageView(std::move(content.image), this);
        view->setAccessibleName(content.file.name);
        if (content.kind == PreviewContent::Kind::animation)
            view->play(content.file.content, content.frames);
        return view;
    }
    case PreviewContent::Kind::pdf:
        return new PdfView(std::move(content.pdf), this);
    case PreviewContent::Kind::text:
        return new TextView(content.text, content.textIsCut, this);
    case PreviewContent::Kind::media: {
        auto *view = new MediaView(content.file, this);
        connect(view, &MediaView::failed, this,
                [this, file = content.file](const QString &problem) {
                    setShown(new FileInfoView(file, problem, this));
                });
        return view;
    }
    case PreviewContent::Kind::other:
        break;
    }
    return new FileInfoView(content.file, content.problem, this);
}

void PreviewPane::setShown(QWidget *shown)
{
    // Also what has it within a window that is not the active one.
    QWidget *const focus = window()->focusWidget();
    const bool focused = m_shown && focus && (m_shown == focus || m_shown->isAncestorOf(focus));
    if (m_shown) {
        m_shown->hide();
        m_shown->deleteLater();
    }
    m_shown = shown;
    m_shown->setGeometry(rect());
    m_shown->show();
    m_frame->raise();
    setFocusProxy(m_shown);
    if (focused)
        m_shown->setFocus(Qt::OtherFocusReason);
}

void PreviewPane::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (m_shown)
        m_shown->setGeometry(rect());
    m_frame->setGeometry(rect());
}

} // namespace zelkam
