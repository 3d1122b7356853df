#include "platform/ui/ui_document_picker_list.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScroller>

namespace zelkam {

DocumentListView::DocumentListView(QWidget *parent) : QListView(parent)
{
    setFrameShape(QFrame::NoFrame);
    setUniformItemSizes(true); // otherwise each of 100,000 rows is measured
    setSelectionMode(QAbstractItemView::NoSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextElideMode(Qt::ElideMiddle);
    setMouseTracking(true);
    QScroller::grabGesture(viewport(), QScroller::TouchGesture);
    connect(this, &QListView::clicked, this, &DocumentListView::tapped);
}

void DocumentListView::keyboardSearch(const QString &search)
{
    emit typed(search);
}

void DocumentListView::keyPressEvent(QKeyEvent *event)
{
    const QModelIndex index = currentIndex();
    const bool isAlt = event->modifiers().testFlag(Qt::AltModifier);
    switch (event->key()) {
    case Qt::Key_Space:
        if (index.isValid())
            emit tapped(index);
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (index.isValid())
            emit openRequested(index);
        else
            event->ignore();
        return;
    case Qt::Key_Backspace:
        emit upRequested();
        return;
    case Qt::Key_Up:
        if (isAlt)
            emit upRequested();
        else if (!index.isValid() || index.row() == 0)
            emit leftUpwards();
        else
            QListView::keyPressEvent(event);
        return;
    default:
        QListView::keyPressEvent(event);
    }
}

void DocumentListView::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid())
        emit openRequested(index);
}

} // namespace zelkam
