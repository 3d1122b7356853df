#include "platform/photos_ui/picture_camera.h"

#include "platform/foundation/dispatch_queue.h"
#include "platform/images/picture.h"
#include "platform/photos/photo_workers.h"

#include <QPointer>

namespace zelkam {

PictureCamera::PictureCamera(QString path) : m_path(std::move(path)) {}

void PictureCamera::start()
{
    m_running = true;
    if (!m_frame.isNull()) {
        DispatchQueue::main().async([camera = QPointer(this)] {
            if (camera && camera->m_running)
                emit camera->frameArrived();
        });
        return;
    }
    PhotoWorkers::start(
        [camera = QPointer(this), path = m_path](PhotoReading &reading) {
            const auto data = readPictureFile(path);
            reading.end();
            const auto picture = data ? decodePicture(*data) : std::nullopt;
            DispatchQueue::main().async([camera, picture] {
                if (!camera || !camera->m_running)
                    return;
                if (!picture) {
                    emit camera->failed(tr("The picture for the camera cannot be read."));
                    return;
                }
                camera->m_frame = picture->toQImage();
                emit camera->frameArrived();
            });
        },
        PhotoWorkers::Kind::requested);
}

void PictureCamera::stop()
{
    m_running = false;
}

void PictureCamera::capture()
{
    DispatchQueue::main().async([camera = QPointer(this)] {
        if (camera && !camera->m_frame.isNull())
            emit camera->captured(camera->m_frame);
    });
}

void PictureCamera::switchCamera()
{
    m_frame = m_frame.mirrored(true, false);
    if (m_running && !m_frame.isNull())
        emit frameArrived();
}

} // namespace zelkam
