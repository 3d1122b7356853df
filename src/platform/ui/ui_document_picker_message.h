#pragma once

#include <QBasicTimer>
#include <QString>
#include <QWidget>

namespace zelkam {

/// What stands in the place of a list that is empty, not there yet or cannot be had.
class DocumentPickerMessage : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    void showText(const QString &iconName, const QString &title, const QString &detail = {});
    /// A turning ring, after a moment; most work is done before anyone sees it.
    void showLoading(const QString &title);
    void setDetail(const QString &detail);

protected:
    void paintEvent(QPaintEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QString m_iconName;
    QString m_title;
    QString m_detail;
    QBasicTimer m_timer;
    int m_ticks = 0;
};

} // namespace zelkam
