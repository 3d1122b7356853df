#include "platform/photos_ui/camera_device.h"

#include "platform/photos_ui/picture_camera.h"
#include "platform/photos_ui/system_camera.h"

namespace zelkam {

namespace {

QString &virtualImage()
{
    static QString path;
    return path;
}

} // namespace

std::unique_ptr<CameraDevice> makeCameraDevice()
{
    if (!virtualImage().isEmpty())
        return std::make_unique<PictureCamera>(virtualImage());
    if (SystemCamera::isAvailable())
        return std::make_unique<SystemCamera>();
    return nullptr;
}

void setVirtualCameraImage(const QString &path)
{
    virtualImage() = path;
}

} // namespace zelkam
