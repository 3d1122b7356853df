#include "platform/photos_ui/system_camera.h"

#include <QCameraDevice>
#include <QMediaDevices>

namespace zelkam {

namespace {

/// The largest pictures that still come fluently. Where a camera is only known by its own choice,
/// that stays.
QCameraFormat bestFormat(const QCameraDevice &device)
{
    constexpr float fluent = 15;
    constexpr qint64 mostPixels = 12'500'000;
    const auto area = [](const QCameraFormat &format) {
        return qint64(format.resolution().width()) * format.resolution().height();
    };
    QCameraFormat best;
    for (const QCameraFormat &format : device.videoFormats()) {
        if (format.maxFrameRate() >= fluent && area(format) <= mostPixels &&
            (best.isNull() || area(format) > area(best)))
            best = format;
    }
    return best;
}

} // namespace

bool SystemCamera::isAvailable()
{
    return !QMediaDevices::videoInputs().isEmpty();
}

SystemCamera::SystemCamera()
{
    m_session.setVideoSink(&m_sink);
    m_session.setImageCapture(&m_capture);
    connect(&m_sink, &QVideoSink::videoFrameChanged, this, [this](const QVideoFrame &frame) {
        if (!m_running)
            return;
        m_frame = frame;
        emit frameArrived();
    });
    connect(&m_capture, &QImageCapture::imageCaptured, this,
            [this](int, const QImage &image) { emit captured(image); });
    connect(&m_capture, &QImageCapture::errorOccurred, this,
            [this](int, QImageCapture::Error, const QString &reason) { emit failed(reason); });
    use(QMediaDevices::defaultVideoInput());
}

SystemCamera::~SystemCamera()
{
    stop();
    m_session.setCamera(nullptr);
    m_session.setImageCapture(nullptr);
    m_session.setVideoSink(nullptr);
}

void SystemCamera::use(const QCameraDevice &device)
{
    auto camera = std::make_unique<QCamera>(device);
    const QCameraFormat format = bestFormat(device);
    if (!format.isNull())
        camera->setCameraFormat(format);
    connect(camera.get(), &QCamera::errorOccurred, this,
            [this](QCamera::Error error, const QString &reason) {
                if (error != QCamera::NoError && m_running)
                    emit failed(reason);
            });
    m_session.setCamera(camera.get());
    m_camera = std::move(camera);
    m_frame = {};
}

void SystemCamera::start()
{
    m_running = true;
    m_camera->start();
}

void SystemCamera::stop()
{
    m_running = false;
    m_camera->stop();
}

void SystemCamera::capture()
{
    m_capture.capture();
}

QImage SystemCamera::currentFrame()
{
    return m_frame.isValid() ? m_frame.toImage() : QImage();
}

bool SystemCamera::canSwitch() const
{
    return QMediaDevices::videoInputs().size() > 1;
}

void SystemCamera::switchCamera()
{
    const auto devices = QMediaDevices::videoInputs();
    if (devices.isEmpty())
        return;
    const auto next = (devices.indexOf(m_camera->cameraDevice()) + 1) % devices.size();
    const bool running = m_running;
    stop();
    use(devices.at(next));
    if (running)
        start();
}

} // namespace zelkam
