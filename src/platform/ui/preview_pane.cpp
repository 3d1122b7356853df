#include "platform/ui/preview_pane.h"

#include "platform/foundation/dispatch_queue.h"
#include "platform/ui/background_work.h"
#include "platform/ui/file_info_view.h"
#include "platform/ui/image_view.h"
#include "platform/ui/media_view.h"
#include "platform/ui/pdf_view.h"
#include "platform/ui/preview_content.h"
#include "platform/ui/text_view.h"
#include "platform/ui/theme.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace zelkam {

namespace {

/// No honest file takes so long on any machine; a dishonest one would for ever.
constexpr std::chrono::seconds patience{20};

QString sentence(const char *text)
{
    return QCoreApplication::translate("QLPreviewController", text);
}

} // namespace

PreviewPane::PreviewPane(QWidget *parent) : QWidget(parent)
{
    setAutoFillBackground(true);
    m_patience.setSingleShot(true);
}

void PreviewPane::showFile(const std::optional<URL> &url, const std::optional<QString> &title)
{
    const int generation = ++m_generation;
    setShown(new LoadingView(this));

    m_patience.disconnect(this);
    connect(&m_patience, &QTimer::timeout, this, [this, url, title] {
        ++m_generation;
        PreviewContent content;
        content.file.name = title.value_or(url ? url->lastPathComponent() : QString());
        content.problem = sentence("The file takes too long to open.");
        showContent(std::move(content));
    });
    m_patience.start(patience);

    runInBackground([url, title, generation, self = QPointer(this)] {
        auto content = std::make_shared<PreviewContent>(loadPreview(url));
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
            view->play(content.animation);
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
    const bool focused = m_shown && m_shown->isAncestorOf(QWidget::focusWidget());
    if (m_shown) {
        m_shown->hide();
        m_shown->deleteLater();
    }
    m_shown = shown;
    m_shown->setGeometry(rect());
    m_shown->show();
    if (focused)
        m_shown->setFocus(Qt::OtherFocusReason);
}

void PreviewPane::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (m_shown)
        m_shown->setGeometry(rect());
}

} // namespace zelkam
