#include "platform/photos_ui/ui_image_picker_controller.h"

#include "platform/foundation/dispatch_queue.h"
#include "platform/images/picture.h"
#include "platform/photos/photo_workers.h"
#include "platform/photos_ui/camera_view.h"
#include "platform/photos_ui/photo_grid_view.h"
#include "platform/photos_ui/photo_library_view.h"

namespace zelkam {

UIImagePickerController::UIImagePickerController() = default;

UIImagePickerController::~UIImagePickerController() = default;

bool UIImagePickerController::isSourceTypeAvailable(UIImagePickerControllerSourceType sourceType)
{
    return sourceType == UIImagePickerControllerSourceType::photoLibrary || makeCameraDevice();
}

void UIImagePickerController::setDelegate(std::weak_ptr<UIImagePickerControllerDelegate> delegate)
{
    m_delegate = std::move(delegate);
}

CameraView *UIImagePickerController::cameraView() const
{
    return m_camera;
}

QWidget *UIImagePickerController::loadView()
{
    if (sourceType == UIImagePickerControllerSourceType::camera) {
        m_camera = new CameraView;
        return m_camera;
    }
    constexpr bool hasDone = false;
    m_library = new PhotoLibraryView(hasDone);
    return m_library;
}

void UIImagePickerController::viewDidLoad()
{
    UIViewController::viewDidLoad();
    if (m_camera) {
        connect(m_camera, &CameraView::cancelled, this, &UIImagePickerController::cancel);
        connect(m_camera, &CameraView::taken, this, &UIImagePickerController::finish);
        connect(m_camera, &CameraView::stateChanged, this, [this] {
            if (m_camera->state() == CameraView::State::live ||
                m_camera->state() == CameraView::State::unavailable)
                becomeReady();
        });
        return;
    }
    connect(m_library, &PhotoLibraryView::cancelled, this, &UIImagePickerController::cancel);
    connect(m_library, &PhotoLibraryView::ready, this, &UIImagePickerController::becomeReady);
    connect(&m_library->grid(), &PhotoGridView::tapped, this,
            [this](const PHAsset &asset) { pick(asset.filePath()); });
}

void UIImagePickerController::viewDidAppear(bool animated)
{
    UIViewController::viewDidAppear(animated);
    if (m_camera) {
        m_camera->setIsSeen(true);
        m_camera->setFocus();
        if (m_camera->state() == CameraView::State::unavailable)
            becomeReady();
    } else {
        m_library->grid().setFocus();
        if (m_library->isReady())
            becomeReady();
    }
}

void UIImagePickerController::viewDidDisappear(bool animated)
{
    UIViewController::viewDidDisappear(animated);
    if (m_camera)
        m_camera->setIsSeen(false);
}

void UIImagePickerController::becomeReady()
{
    if (!std::exchange(m_ready, true))
        emit ready();
}

void UIImagePickerController::whenReady(std::function<void()> then)
{
    if (m_ready)
        QMetaObject::invokeMethod(this, std::move(then), Qt::QueuedConnection);
    else
        connect(this, &UIImagePickerController::ready, this, std::move(then),
                Qt::SingleShotConnection);
}

void UIImagePickerController::pick(const QString &filePath)
{
    if (!m_library || std::exchange(m_chosen, true))
        return;
    m_library->showBusy(true);
    PhotoWorkers::start(
        [picker = weak_from_this(), filePath](PhotoReading &reading) {
            const auto data = readPictureFile(filePath);
            reading.end();
            const auto picture = data ? decodePicture(*data) : std::nullopt;
            DispatchQueue::main().async([picker, picture] {
                if (const auto self =
                        std::static_pointer_cast<UIImagePickerController>(picker.lock()))
                    self->finish(picture ? picture->toQImage() : QImage());
            });
        },
        PhotoWorkers::Kind::requested,
        [picker = weak_from_this()] {
            if (const auto self = std::static_pointer_cast<UIImagePickerController>(picker.lock()))
                self->finish({});
        });
}

void UIImagePickerController::finish(const QImage &image)
{
    if (std::exchange(m_answered, true))
        return;
    QVariantMap info;
    if (!image.isNull())
        info.insert(UIImagePickerControllerOriginalImage, image);
    if (const auto delegate = m_delegate.lock())
        delegate->imagePickerController(this, info);
}

void UIImagePickerController::cancel()
{
    if (std::exchange(m_answered, true))
        return;
    if (const auto delegate = m_delegate.lock())
        delegate->imagePickerControllerDidCancel(this);
}

bool UIImagePickerController::cancelOperation()
{
    cancel();
    return true;
}

} // namespace zelkam
