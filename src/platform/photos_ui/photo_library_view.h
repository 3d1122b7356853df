#pragma once

#include "platform/photos/ph_asset.h"

#include <QBasicTimer>
#include <QString>
#include <QWidget>
#include <memory>

class QStackedWidget;

namespace zelkam {

class DocumentPickerMessage;
class PhotoGridView;
class UIBarButtonItem;
class UINavigationBar;

/// The photo library on a screen: a bar with Cancel, a title and maybe Done, and below it the grid,
/// or a sentence when there is nothing to show. It follows the library's changes.
class PhotoLibraryView : public QWidget
{
    Q_OBJECT

public:
    /// @param hasDone  whether the bar has a Done button
    explicit PhotoLibraryView(bool hasDone);
    ~PhotoLibraryView() override;

    PhotoGridView &grid() { return *m_grid; }
    /// Puts the tile that takes a photo before the photos, also where there are none.
    void addCameraTile();
    void setTitle(const QString &title);
    void setDoneEnabled(bool enabled);

    /// Whether photos, or the reason why there are none, are on the screen.
    bool isReady() const { return m_ready; }

    /// Shows a sentence over the photos for a moment.
    void showNotice(const QString &text);
    /// Shows that the person's choice is being read, and takes no more input but Cancel.
    void showBusy(bool busy);

signals:
    void cancelled();
    void accepted();
    void ready();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    class Notice;
    class BusyVeil;

    void showLibrary();
    void arrange();

    std::shared_ptr<UIBarButtonItem> m_cancel;
    std::shared_ptr<UIBarButtonItem> m_done;
    UINavigationBar *m_bar;
    QStackedWidget *m_pages;
    PhotoGridView *m_grid;
    DocumentPickerMessage *m_message;
    Notice *m_notice;
    BusyVeil *m_busy;
    QBasicTimer m_noticeTime;
    QString m_title;
    bool m_ready = false;
};

} // namespace zelkam
