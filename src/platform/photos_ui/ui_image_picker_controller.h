#pragma once

#include "platform/ui/ui_view_controller.h"

#include <QImage>
#include <QPointer>
#include <QString>
#include <QVariantMap>
#include <functional>
#include <memory>

namespace zelkam {

class CameraView;
class PhotoLibraryView;
class UIImagePickerController;

/// Where a picture comes from. The values are the platform's.
enum class UIImagePickerControllerSourceType { photoLibrary = 0, camera = 1 };

/// The key of the picked picture (a QImage, upright) in what a delegate is given. It is missing
/// when what was picked is no picture that can be decoded.
inline const QString UIImagePickerControllerOriginalImage =
    QStringLiteral("UIImagePickerControllerOriginalImage");

/// Hears what an image picker led to. One of the two operations is called, once, on the main
/// thread, while the picker is still in place: it does not leave by itself.
class UIImagePickerControllerDelegate
{
public:
    virtual ~UIImagePickerControllerDelegate() = default;
    virtual void imagePickerController(UIImagePickerController *picker,
                                       const QVariantMap &didFinishPickingMediaWithInfo) = 0;
    virtual void imagePickerControllerDidCancel(UIImagePickerController *picker) = 0;
};

/// The system's picker of a single picture: the photo library as a grid, where a tap chooses, or
/// the camera with a viewfinder. A device without a camera says so, and offers Cancel.
///
/// The picked picture is decoded on a worker thread, within the limits that hold for every picture.
class UIImagePickerController : public UIViewController
{
    Q_OBJECT

public:
    UIImagePickerController();
    ~UIImagePickerController() override;

    /// Whether the source can be used at all. The library always can, and shows when it is empty.
    static bool isSourceTypeAvailable(UIImagePickerControllerSourceType sourceType);

    /// Set both before the view is loaded. Editing is not offered, whatever is set.
    UIImagePickerControllerSourceType sourceType = UIImagePickerControllerSourceType::photoLibrary;
    bool allowsEditing = false;

    /// The picker does not keep its delegate alive; without one nobody hears.
    void setDelegate(std::weak_ptr<UIImagePickerControllerDelegate> delegate);
    std::shared_ptr<UIImagePickerControllerDelegate> delegate() const { return m_delegate.lock(); }

    /// Picks a file as if it had been tapped. Library only.
    void pick(const QString &filePath);
    void cancel();

    /// Runs something as soon as `ready` is sent, or at the next turn of the event loop when it
    /// has been sent already.
    void whenReady(std::function<void()> then);

    /// The camera's screen, for whoever acts in a person's place; null with the library.
    CameraView *cameraView() const;

    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;
    void viewDidDisappear(bool animated) override;
    bool cancelOperation() override;

signals:
    /// The photos, the first frame of the camera, or the reason why there are none, are shown.
    /// Sent once.
    void ready();

protected:
    QWidget *loadView() override;

private:
    void becomeReady();
    void finish(const QImage &image);

    std::weak_ptr<UIImagePickerControllerDelegate> m_delegate;
    QPointer<PhotoLibraryView> m_library;
    QPointer<CameraView> m_camera;
    bool m_ready = false;
    bool m_chosen = false;   ///< something is being read
    bool m_answered = false; ///< the delegate knows
};

} // namespace zelkam
