#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QWidget>

namespace zelkam {

class UIWindow;

/// Saves the device's window as PNG, one picture for each request, numbered in their order:
/// 001-reply-fileDownload.png. A picture is taken when the screens have come to rest and the web
/// view has had time to draw; its name is then printed.
class Screenshots : public QObject
{
    Q_OBJECT

public:
    /// @param device  what is pictured     @param window  whose screens are waited for
    Screenshots(const QString &directory, QWidget *device, UIWindow *window);

    /// Asks for a picture named for what happened, such as "reply-fileDownload".
    void request(const QString &name);

    bool isIdle() const { return m_names.isEmpty(); }

signals:
    /// No more pictures are asked for.
    void idle();

private:
    void takeNext();

    const QString m_directory;
    const QPointer<QWidget> m_device;
    const QPointer<UIWindow> m_window;
    QList<QString> m_names;
    QTimer m_settle;
    int m_number = 0;
};

} // namespace zelkam
