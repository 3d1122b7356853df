#include "platform/ui/text_view.h"

#include "platform/ui/theme.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollBar>
#include <QScroller>

namespace zelkam {

TextView::TextView(const QString &text, bool isCut, QWidget *parent) : QPlainTextEdit(parent)
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    setUndoRedoEnabled(false);
    setFrameShape(QFrame::NoFrame);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPixelSize(metrics::captionText + 1);
    setFont(fixed);
    setTabStopDistance(4 * QFontMetricsF(fixed).horizontalAdvance(u' '));
    document()->setDocumentMargin(2 * metrics::grid);
    setPlainText(text);
    QScroller::grabGesture(viewport(), QScroller::TouchGesture);

    if (isCut) {
        m_cutNotice = new QLabel(tr("Only the beginning of this file is shown."), this);
        m_cutNotice->setTextFormat(Qt::PlainText);
        m_cutNotice->setFont(themeFont(TextRole::caption, parent ? parent->font() : font()));
        m_cutNotice->setAlignment(Qt::AlignCenter);
        m_cutNotice->setAutoFillBackground(true);
        setViewportMargins(0, 0, 0, 4 * metrics::grid);
    }
}

void TextView::keyPressEvent(QKeyEvent *event)
{
    // Nothing can be written here, so keys move the text and not a mark within it; with Shift they
    // select.
    if (!event->modifiers().testFlag(Qt::ShiftModifier)) {
        switch (event->key()) {
        case Qt::Key_Home:
            return verticalScrollBar()->setValue(0);
        case Qt::Key_End:
            return verticalScrollBar()->setValue(verticalScrollBar()->maximum());
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            return QAbstractScrollArea::keyPressEvent(event);
        default:
            break;
        }
    }
    QPlainTextEdit::keyPressEvent(event);
}

void TextView::resizeEvent(QResizeEvent *event)
{
    QPlainTextEdit::resizeEvent(event);
    if (m_cutNotice)
        m_cutNotice->setGeometry(0, height() - 4 * metrics::grid, width(), 4 * metrics::grid);
}

} // namespace zelkam
