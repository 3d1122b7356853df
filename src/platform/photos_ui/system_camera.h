#pragma once

#include "platform/photos_ui/camera_device.h"

#include <QCamera>
#include <QImageCapture>
#include <QMediaCaptureSession>
#include <QVideoFrame>
#include <QVideoSink>
#include <memory>

namespace zelkam {

/// The device's cameras, through Qt Multimedia.
class SystemCamera : public CameraDevice
{
    Q_OBJECT

public:
    /// Whether the device has a camera.
    static bool isAvailable();

    SystemCamera();
    ~SystemCamera() override;

    void start() override;
    void stop() override;
    void capture() override;
    QImage currentFrame() override;
    bool canSwitch() const override;
    void switchCamera() override;

private:
    void use(const QCameraDevice &device);

    std::unique_ptr<QCamera> m_camera;
    QMediaCaptureSession m_session;
    QVideoSink m_sink;
    QImageCapture m_capture;
    QVideoFrame m_frame;
    bool m_running = false;
};

} // namespace zelkam
