#include "platform/photos_ui/image_grid_picker_controller.h"

#include "platform/photos/ph_photo_library.h"
#include "platform/photos/saved_photos_album.h"
#include "platform/photos_ui/photo_grid_view.h"
#include "platform/photos_ui/photo_library_view.h"

#include <QLocale>

namespace zelkam {

/// Takes the camera's answer and closes it.
class ImageGridPickerController::CameraDelegate : public UIImagePickerControllerDelegate
{
public:
    explicit CameraDelegate(ImageGridPickerController &owner) : m_owner(owner) {}

    void imagePickerController(UIImagePickerController *picker,
                               const QVariantMap &didFinishPickingMediaWithInfo) override
    {
        const auto photo = didFinishPickingMediaWithInfo.value(UIImagePickerControllerOriginalImage)
                               .value<QImage>();
        picker->leave(true, [owner = m_owner.weak_from_this(), photo] {
            if (const auto self = std::static_pointer_cast<ImageGridPickerController>(owner.lock()))
                self->add(photo);
        });
    }
    void imagePickerControllerDidCancel(UIImagePickerController *picker) override
    {
        picker->leave(true, [owner = m_owner.weak_from_this()] {
            if (const auto self = std::static_pointer_cast<ImageGridPickerController>(owner.lock()))
                emit self->photoTaken();
        });
    }

private:
    ImageGridPickerController &m_owner;
};

ImageGridPickerController::ImageGridPickerController() = default;

ImageGridPickerController::~ImageGridPickerController() = default;

void ImageGridPickerController::presentFrom(UIViewController &presenter, bool animated,
                                            Handlers handlers)
{
    m_handlers = std::move(handlers);
    modalPresentationStyle = UIModalPresentationStyle::fullScreen;
    presenter.present(shared_from_this(), animated, std::exchange(m_handlers.completion, {}));
}

QWidget *ImageGridPickerController::loadView()
{
    constexpr bool hasDone = true;
    m_library = new PhotoLibraryView(hasDone);
    return m_library;
}

void ImageGridPickerController::viewDidLoad()
{
    UIViewController::viewDidLoad();
    PhotoGridView &grid = m_library->grid();
    grid.setShowsSelection(true);
    if (takePhotos)
        m_library->addCameraTile();
    connect(&grid, &PhotoGridView::tapped, this, &ImageGridPickerController::tap);
    connect(&grid, &PhotoGridView::cameraTapped, this, &ImageGridPickerController::openCamera);
    connect(m_library, &PhotoLibraryView::accepted, this, &ImageGridPickerController::accept);
    connect(m_library, &PhotoLibraryView::cancelled, this, &ImageGridPickerController::cancel);
    connect(m_library, &PhotoLibraryView::ready, this, &ImageGridPickerController::ready);
    connect(&PHPhotoLibrary::shared(), &PHPhotoLibrary::changed, this,
            &ImageGridPickerController::forgetMissing);
    showState();
}

void ImageGridPickerController::viewDidAppear(bool animated)
{
    UIViewController::viewDidAppear(animated);
    m_library->grid().setFocus();
    if (m_library->isReady())
        emit ready();
}

bool ImageGridPickerController::isFull() const
{
    return maxNumberOfSelections > 0 && m_selection.size() >= maxNumberOfSelections;
}

void ImageGridPickerController::tap(const PHAsset &asset)
{
    if (m_accepted || m_isOver)
        return;
    if (m_selection.contains(asset)) {
        deselect(asset);
        return;
    }
    if (isFull() && maxNumberOfSelections == 1)
        deselect(m_selection.first());
    if (isFull()) {
        m_library->showNotice(
            tr("You can select up to %Ln photo(s).", nullptr, int(maxNumberOfSelections)));
        if (m_handlers.selectLimitReached)
            m_handlers.selectLimitReached(maxNumberOfSelections);
        return;
    }
    select(asset);
}

void ImageGridPickerController::deselect(PHAsset asset)
{
    m_selection.removeOne(asset);
    showState();
    if (m_handlers.deselect)
        m_handlers.deselect(asset);
}

void ImageGridPickerController::select(const PHAsset &asset)
{
    m_selection.append(asset);
    showState();
    if (m_handlers.select)
        m_handlers.select(asset);
}

void ImageGridPickerController::openCamera()
{
    if (m_accepted || m_isOver || isFull())
        return;
    const auto camera = std::make_shared<UIImagePickerController>();
    camera->sourceType = UIImagePickerControllerSourceType::camera;
    m_cameraDelegate = std::make_shared<CameraDelegate>(*this);
    camera->setDelegate(m_cameraDelegate);
    present(camera, true);
}

void ImageGridPickerController::add(const QImage &photo)
{
    const auto image = UIImage::fromQImage(photo);
    if (!image) {
        emit photoTaken();
        return;
    }
    UIImageWriteToSavedPhotosAlbum(
        *image, [self = std::weak_ptr(std::static_pointer_cast<ImageGridPickerController>(
                     shared_from_this()))](const std::optional<QString> &filePath) {
            const auto picker = self.lock();
            if (!picker || picker->m_accepted || picker->m_isOver)
                return;
            const auto asset = filePath ? PHPhotoLibrary::shared().insert(*filePath) : std::nullopt;
            if (asset) {
                picker->m_library->grid().scrollTo(*asset);
                picker->tap(*asset);
            } else {
                picker->m_library->showNotice(tr("The photo could not be saved."));
            }
            emit picker->photoTaken();
        });
}

void ImageGridPickerController::forgetMissing()
{
    if (m_accepted || m_isOver)
        return;
    const QList<PHAsset> &assets = PHPhotoLibrary::shared().assets();
    const QList<PHAsset> before = m_selection;
    for (const PHAsset &asset : before) {
        if (!assets.contains(asset))
            deselect(asset);
    }
}

void ImageGridPickerController::showState()
{
    PhotoGridView &grid = m_library->grid();
    grid.setSelection(m_selection);
    // A single selection moves to where the next tap is, so no photo is out of reach.
    grid.setIsFull(isFull() && maxNumberOfSelections > 1);
    grid.setCameraTileEnabled(!isFull());
    m_library->setDoneEnabled(!m_selection.isEmpty());
    const QLocale locale;
    const auto count = m_selection.size();
    if (maxNumberOfSelections > 0)
        m_library->setTitle(
            tr("%1 of %2 selected")
                .arg(locale.toString(count), locale.toString(maxNumberOfSelections)));
    else if (count > 0)
        m_library->setTitle(tr("%Ln selected", nullptr, int(count)));
    else
        m_library->setTitle(tr("Select photos"));
}

void ImageGridPickerController::showSelection(const QStringList &filePaths)
{
    view();
    const PHPhotoLibrary &library = PHPhotoLibrary::shared();
    if (!m_library->isReady()) {
        connect(
            this, &ImageGridPickerController::ready, this,
            [this, filePaths] { showSelection(filePaths); }, Qt::SingleShotConnection);
        return;
    }
    for (const QString &path : filePaths) {
        const auto found =
            std::find_if(library.assets().cbegin(), library.assets().cend(),
                         [&path](const PHAsset &asset) { return asset.filePath() == path; });
        if (found == library.assets().cend()) {
            qWarning("The image picker has no %s", qUtf8Printable(path));
            continue;
        }
        const PHAsset asset = *found;
        m_library->grid().scrollTo(asset);
        tap(asset);
    }
    emit selectionShown();
}

void ImageGridPickerController::accept()
{
    if (m_selection.isEmpty() || m_isOver || std::exchange(m_accepted, true))
        return;
    m_library->showBusy(true);
    if (m_handlers.finish)
        m_handlers.finish(m_selection);
    else
        close();
}

void ImageGridPickerController::cancel()
{
    if (m_isOver)
        return;
    if (m_handlers.cancel)
        m_handlers.cancel(m_selection);
    close();
}

void ImageGridPickerController::close()
{
    if (!std::exchange(m_isOver, true))
        leave(true);
}

bool ImageGridPickerController::cancelOperation()
{
    cancel();
    return true;
}

bool ImageGridPickerController::acceptOperation()
{
    accept();
    return true;
}

} // namespace zelkam
