#include "app/picker_answers.h"

#include "app/screenshots.h"
#include "platform/photos_ui/camera_view.h"
#include "platform/photos_ui/image_grid_picker_controller.h"
#include "platform/ui/ui_document_picker_view_controller.h"
#include "platform/ui/ui_window.h"
#include "plugin/zelkam_mobile_single_image_picker.h"

namespace zelkam {

PickerAnswers::PickerAnswers(UIWindow &window, Screenshots *screenshots)
    : m_screenshots(screenshots)
{
    // Queued, as the screen's own work for its appearance comes first.
    connect(&window, &UIWindow::screenDidAppear, this, [this](UIViewController *screen) {
        QMetaObject::invokeMethod(
            this,
            [this, screen = QPointer<UIViewController>(screen)] {
                if (screen)
                    answer(screen);
            },
            Qt::QueuedConnection);
    });
}

void PickerAnswers::answer(UIViewController *screen)
{
    auto *documents = qobject_cast<UIDocumentPickerViewController *>(screen);
    auto *photos = qobject_cast<ImageGridPickerController *>(screen);
    auto *single = qobject_cast<ZelkamMobileSingleImagePicker *>(screen);
    if ((!documents && !photos && !single) || m_answers.isEmpty())
        return;
    const PickerAnswer answer = m_answers.takeFirst();
    // A document picker has no camera.
    if (!answer || (documents && answer->isEmpty()))
        afterPicture(*screen, [screen] { screen->cancelOperation(); });
    else if (documents)
        select(*documents, *answer);
    else if (single)
        pickOne(*single->imagePicker, *answer);
    else if (answer->isEmpty())
        takeForSelection(*photos);
    else
        select(*photos, *answer);
}

template<typename Picker>
void PickerAnswers::select(Picker &picker, const QStringList &paths)
{
    connect(
        &picker, &Picker::selectionShown, this,
        [this, &picker] {
            afterPicture(picker, [&picker] {
                if (picker.selection().isEmpty())
                    picker.cancel();
                else
                    picker.accept();
            });
        },
        Qt::SingleShotConnection);
    picker.showSelection(paths);
}

void PickerAnswers::pickOne(UIImagePickerController &picker, const QStringList &paths)
{
    if (picker.cameraView()) {
        takePhoto(picker);
        return;
    }
    if (paths.isEmpty()) {
        afterPicture(picker, [&picker] { picker.cancel(); });
        return;
    }
    picker.whenReady([this, &picker, path = paths.first()] {
        afterPicture(picker, [&picker, path] { picker.pick(path); });
    });
}

void PickerAnswers::takeForSelection(ImageGridPickerController &picker)
{
    if (!picker.takePhotos) {
        picker.cancel();
        return;
    }
    connect(
        &picker, &ImageGridPickerController::photoTaken, this,
        [this, &picker] {
            afterPicture(picker, [&picker] {
                if (picker.selection().isEmpty())
                    picker.cancel();
                else
                    picker.accept();
            });
        },
        Qt::SingleShotConnection);
    picker.openCamera();
    if (const auto camera =
            std::dynamic_pointer_cast<UIImagePickerController>(picker.presentedViewController()))
        takePhoto(*camera);
}

void PickerAnswers::takePhoto(UIImagePickerController &picker)
{
    picker.whenReady([this, &picker] {
        CameraView *camera = picker.cameraView();
        if (camera->state() == CameraView::State::unavailable) {
            afterPicture(picker, [&picker] { picker.cancel(); });
            return;
        }
        connect(
            camera, &CameraView::reviewed, this,
            [this, &picker, camera] { afterPicture(picker, [camera] { camera->usePhoto(); }); },
            Qt::SingleShotConnection);
        afterPicture(picker, [camera] { camera->takePhoto(); });
    });
}

void PickerAnswers::afterPicture(UIViewController &screen, std::function<void()> then)
{
    if (!m_screenshots) {
        then();
        return;
    }
    m_screenshots->request(QStringLiteral("selection"));
    connect(m_screenshots, &Screenshots::idle, &screen, std::move(then), Qt::SingleShotConnection);
}

} // namespace zelkam
