#pragma once

#include "platform/photos_ui/camera_device.h"

#include <QAbstractButton>
#include <QImage>
#include <QWidget>
#include <memory>

namespace zelkam {

class CameraTextButton;
class DocumentPickerMessage;
class ShutterButton;

/// The camera on a screen: what it sees, a shutter, and after a shot whether to use or to retake.
/// Without a camera it says so. Black whatever the theme, so that the picture's colours show.
class CameraView : public QWidget
{
    Q_OBJECT

public:
    CameraView();
    ~CameraView() override;

    enum class State { starting, live, taking, review, unavailable };
    State state() const { return m_state; }

    /// As the controls of these names; nothing in a state that has no such control.
    void takePhoto();
    void retake();
    void usePhoto();
    void switchCamera();

    /// The camera runs while the screen is seen only.
    void setIsSeen(bool seen);

signals:
    void cancelled();
    void taken(const QImage &image);
    void stateChanged();
    /// A photo was taken and waits to be used or retaken.
    void reviewed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void setState(State state);
    void fail(const QString &title, const QString &reason);
    void arrange();

    std::unique_ptr<CameraDevice> m_camera;
    QImage m_shot;
    State m_state = State::starting;
    DocumentPickerMessage *m_message;
    ShutterButton *m_shutter;
    CameraTextButton *m_switch;
    CameraTextButton *m_cancel;
    CameraTextButton *m_retake;
    CameraTextButton *m_use;
};

} // namespace zelkam
