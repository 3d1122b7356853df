#pragma once

#include <QString>
#include <QWidget>

class QLabel;
class QPushButton;

namespace zelkam {

/// What stands in place of a page that cannot be shown: an icon, what happened, what may help,
/// and a button that tries again.
class MessageScreen : public QWidget
{
    Q_OBJECT

public:
    explicit MessageScreen(QWidget *parent = nullptr);

    /// @param iconName  a freedesktop name
    void setMessage(const QString &iconName, const QString &title, const QString &text);

signals:
    void retryRequested();

protected:
    void changeEvent(QEvent *event) override;

private:
    void restyle();

    QString m_iconName;
    QLabel *m_icon;
    QLabel *m_title;
    QLabel *m_text;
    QPushButton *m_retry;
};

} // namespace zelkam
