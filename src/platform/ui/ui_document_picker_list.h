#pragma once

#include <QListView>

namespace zelkam {

/// The list of a folder's items for thumb, mouse and keyboard. It says what the person wants and
/// changes nothing itself.
class DocumentListView : public QListView
{
    Q_OBJECT

public:
    explicit DocumentListView(QWidget *parent = nullptr);

    void keyboardSearch(const QString &search) override;

signals:
    void tapped(const QModelIndex &index);        ///< a tap, a click, the space bar
    void openRequested(const QModelIndex &index); ///< Enter or a double click
    void upRequested();
    void typed(const QString &text);
    void leftUpwards();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
};

} // namespace zelkam
