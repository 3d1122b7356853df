#pragma once

#include <QImage>
#include <QObject>
#include <QString>
#include <memory>

namespace zelkam {

/// A camera that shows what it sees and takes pictures. Main thread.
///
/// After start(), frames come until stop(), or failed() once and nothing after it. capture() is
/// answered by one captured() or by failed().
class CameraDevice : public QObject
{
    Q_OBJECT

public:
    virtual void start() = 0;
    virtual void stop() = 0;
    virtual void capture() = 0;

    /// What the camera sees now, upright; null before the first frame. It may take some
    /// milliseconds: ask when it is to be drawn, not for every frame.
    virtual QImage currentFrame() = 0;

    /// Whether there is another camera to turn to.
    virtual bool canSwitch() const = 0;
    /// Turns to the next camera, running as this one was.
    virtual void switchCamera() = 0;

signals:
    void frameArrived();
    void captured(const QImage &image);
    void failed(const QString &reason);
};

/// The device's camera; the virtual one when a picture was set; null when there is none.
std::unique_ptr<CameraDevice> makeCameraDevice();

/// Puts a picture before a virtual camera, which then takes the place of the device's: for the
/// authors of pages, and for tests. An empty path removes it. Main thread.
void setVirtualCameraImage(const QString &path);

} // namespace zelkam
