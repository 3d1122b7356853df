#include "platform/photos_ui/camera_view.h"

#include "platform/photos_ui/camera_controls.h"
#include "platform/ui/layout_guide.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_document_picker_message.h"

#include <QPainter>

namespace zelkam {

CameraView::CameraView()
    : m_message(new DocumentPickerMessage(this)),
      m_shutter(new ShutterButton(this)),
      m_switch(
          new CameraTextButton(tr("Switch camera"), QStringLiteral("view-refresh-symbolic"), this)),
      m_cancel(new CameraTextButton(tr("Cancel"), {}, this)),
      m_retake(new CameraTextButton(tr("Retake"), {}, this)),
      m_use(new CameraTextButton(tr("Use photo"), {}, this))
{
    // The screen's own colours: its controls and its message lie on black.
    setPalette(themePalette(ColorScheme::dark));
    connect(m_shutter, &QAbstractButton::clicked, this, &CameraView::takePhoto);
    connect(m_switch, &QAbstractButton::clicked, this, &CameraView::switchCamera);
    connect(m_cancel, &QAbstractButton::clicked, this, &CameraView::cancelled);
    connect(m_retake, &QAbstractButton::clicked, this, &CameraView::retake);
    connect(m_use, &QAbstractButton::clicked, this, &CameraView::usePhoto);

    m_camera = makeCameraDevice();
    if (!m_camera) {
        fail(tr("No camera found"), tr("Connect a camera and try again."));
        return;
    }
    connect(m_camera.get(), &CameraDevice::frameArrived, this, [this] {
        if (m_state == State::starting)
            setState(State::live);
        if (m_state == State::live)
            update();
    });
    connect(m_camera.get(), &CameraDevice::captured, this, [this](const QImage &image) {
        if (m_state != State::taking)
            return;
        m_shot = image;
        setState(State::review);
    });
    connect(m_camera.get(), &CameraDevice::failed, this,
            [this](const QString &reason) { fail(tr("The camera cannot be used"), reason); });
    setState(State::starting);
}

CameraView::~CameraView() = default;

void CameraView::setIsSeen(bool seen)
{
    if (!m_camera || m_state == State::unavailable)
        return;
    if (seen)
        m_camera->start();
    else
        m_camera->stop();
}

void CameraView::fail(const QString &title, const QString &reason)
{
    m_message->showText(QStringLiteral("camera-photo-symbolic"), title, reason);
    setState(State::unavailable);
}

void CameraView::setState(State state)
{
    m_state = state;
    const bool live = state == State::live || state == State::starting || state == State::taking;
    m_message->setVisible(state == State::unavailable);
    m_shutter->setVisible(live);
    m_shutter->setEnabled(state == State::live);
    m_switch->setVisible(live && m_camera && m_camera->canSwitch());
    m_switch->setEnabled(state == State::live);
    m_cancel->setVisible(state != State::review);
    m_retake->setVisible(state == State::review);
    m_use->setVisible(state == State::review);
    arrange();
    // The control that was just used may be gone: the next key goes to the one that follows it.
    if (state == State::review)
        m_use->setFocus();
    else if (state == State::live)
        m_shutter->setFocus();
    update();
    emit stateChanged();
    if (state == State::review)
        emit reviewed();
}

void CameraView::takePhoto()
{
    if (m_state != State::live)
        return;
    setState(State::taking);
    m_camera->capture();
}

void CameraView::retake()
{
    if (m_state != State::review)
        return;
    m_shot = QImage();
    setState(State::starting);
    m_camera->start();
}

void CameraView::usePhoto()
{
    if (m_state == State::review)
        emit taken(m_shot);
}

void CameraView::switchCamera()
{
    if (m_state != State::live || !m_camera->canSwitch())
        return;
    setState(State::starting);
    m_camera->switchCamera();
}

void CameraView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    arrange();
}

void CameraView::arrange()
{
    const QRect room = rect().marginsRemoved(safeAreaInsets(this));
    constexpr int footer = 120;
    const int middle = room.bottom() - footer / 2;
    const auto place = [&room, middle](QWidget *button, Qt::Alignment side) {
        const QSize size = button->sizeHint();
        const int left = room.left() + 2 * metrics::grid;
        const int right = room.right() - 2 * metrics::grid - size.width();
        const int x = side == Qt::AlignLeft    ? left
                      : side == Qt::AlignRight ? right
                                               : room.center().x() - size.width() / 2;
        button->setGeometry(QRect({x, middle - size.height() / 2}, size));
    };
    const bool mirrored = isRightToLeft();
    place(m_shutter, Qt::AlignHCenter);
    place(m_cancel, mirrored ? Qt::AlignRight : Qt::AlignLeft);
    place(m_switch, mirrored ? Qt::AlignLeft : Qt::AlignRight);
    place(m_retake, mirrored ? Qt::AlignRight : Qt::AlignLeft);
    place(m_use, mirrored ? Qt::AlignLeft : Qt::AlignRight);
    m_message->setGeometry(room.adjusted(0, 0, 0, -footer));
}

void CameraView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    const QImage image = m_state == State::review                    ? m_shot
                         : m_camera && m_state != State::unavailable ? m_camera->currentFrame()
                                                                     : QImage();
    if (image.isNull())
        return;
    constexpr int footer = 120;
    const QRect room = rect().marginsRemoved(safeAreaInsets(this)).adjusted(0, 0, 0, -footer);
    QRect target(QPoint(), image.size().scaled(room.size(), Qt::KeepAspectRatio));
    target.moveCenter(room.center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, image);
}

} // namespace zelkam
