#pragma once

#include "platform/photos_ui/camera_device.h"

#include <QString>

namespace zelkam {

/// A camera before which a picture stands. Switching turns to its "front side": the same picture,
/// mirrored, so that the switch shows.
class PictureCamera : public CameraDevice
{
    Q_OBJECT

public:
    explicit PictureCamera(QString path);

    void start() override;
    void stop() override;
    void capture() override;
    QImage currentFrame() override { return m_frame; }
    bool canSwitch() const override { return true; }
    void switchCamera() override;

private:
    QString m_path;
    QImage m_frame;
    bool m_running = false;
};

} // namespace zelkam
