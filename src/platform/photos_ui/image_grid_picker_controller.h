#pragma once

#include "platform/photos/ph_asset.h"
#include "platform/photos_ui/ui_image_picker_controller.h"
#include "platform/ui/ui_view_controller.h"

#include <QList>
#include <QPointer>
#include <QStringList>
#include <functional>
#include <memory>

namespace zelkam {

class PhotoLibraryView;

/// A screen on which a person picks several photos of the library: the selected ones carry their
/// number. Done and Enter accept them when there are any; Cancel and Esc leave, also while what was
/// accepted is being read. With a limit of one, a tap on another photo moves the selection.
class ImageGridPickerController : public UIViewController
{
    Q_OBJECT

public:
    /// What the picker tells. Each may be empty; all run on the main thread.
    struct Handlers
    {
        std::function<void(const PHAsset &asset)> select;
        std::function<void(const PHAsset &asset)> deselect;
        /// Runs once at most, then the screen leaves: the person wants nothing, or wants no longer
        /// what `finish` has told. Given is what was selected, in the order of the selection.
        std::function<void(const QList<PHAsset> &assets)> cancel;
        /// Likewise, runs once at most. The screen stays, shows that it works and offers Cancel
        /// until close() is called. Without this handler it leaves at once.
        std::function<void(const QList<PHAsset> &assets)> finish;
        /// The screen has come up.
        std::function<void()> completion;
        /// One photo more than the limit was tapped, and not selected.
        std::function<void(qint64 limit)> selectLimitReached;
    };

    ImageGridPickerController();
    ~ImageGridPickerController() override;

    /// How many photos can be selected; zero or less: any number. Set it before the screen is
    /// shown.
    qint64 maxNumberOfSelections = 0;
    /// Whether a first tile takes a photo, which then joins the library and the selection.
    bool takePhotos = false;

    /// Shows the picker over a screen.
    void presentFrom(UIViewController &presenter, bool animated, Handlers handlers);

    const QList<PHAsset> &selection() const { return m_selection; }

    /// Does what a person would: taps each of the files as soon as the library is on the screen.
    /// What is not in the library is left out. Then `selectionShown` is sent.
    void showSelection(const QStringList &filePaths);
    /// As the buttons of these names. Without a selection, `accept` does nothing.
    void accept();
    void cancel();
    void openCamera();
    /// Takes the screen away. Whoever was told of the photos calls it when they have been read;
    /// a cancel is not told any more from then on.
    void close();

    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;
    bool cancelOperation() override;
    bool acceptOperation() override;

signals:
    void selectionShown();
    /// The camera was closed; a photo that was taken is selected, if it could be.
    void photoTaken();
    /// The library, or the reason why there are no photos, is on the screen.
    void ready();

protected:
    QWidget *loadView() override;

private:
    class CameraDelegate;

    bool isFull() const;
    void tap(const PHAsset &asset);
    void select(const PHAsset &asset);
    void deselect(PHAsset asset); // not by reference: it may be one of the selection
    void add(const QImage &photo);
    void forgetMissing();
    void showState();

    Handlers m_handlers;
    QList<PHAsset> m_selection;
    QPointer<PhotoLibraryView> m_library;
    std::shared_ptr<CameraDelegate> m_cameraDelegate; ///< while the camera is open
    bool m_accepted = false;                          ///< the photos are being read
    bool m_isOver = false;
};

} // namespace zelkam
