#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <functional>
#include <optional>

namespace zelkam {

class CameraView;
class ImageGridPickerController;
class Screenshots;
class UIImagePickerController;
class UIViewController;
class UIWindow;

/// The files to pick in one picker, by absolute path; an empty list to take a photo with the
/// picker's camera; nothing to cancel it.
using PickerAnswer = std::optional<QStringList>;

/// Answers pickers in the place of a person, so that pages can be tried unattended. The real
/// screen appears, the selection is made in it, and then it is accepted. Each answer is for one
/// picker, in the order in which the pickers appear; where no answer is left, a picker waits for
/// a person. A picker that can pick none of its files, or has no camera, is cancelled. The camera
/// takes what is before it, also when its answer names files.
class PickerAnswers : public QObject
{
    Q_OBJECT

public:
    /// @param screenshots  takes a picture of each selection before it is accepted; may be null
    PickerAnswers(UIWindow &window, Screenshots *screenshots);

    void append(const PickerAnswer &answer) { m_answers.append(answer); }

private:
    void answer(UIViewController *screen);
    template<typename Picker>
    void select(Picker &picker, const QStringList &paths);
    void pickOne(UIImagePickerController &picker, const QStringList &paths);
    void takeForSelection(ImageGridPickerController &picker);
    void takePhoto(UIImagePickerController &picker);

    /// Runs what follows when a picture of the screen has been taken.
    void afterPicture(UIViewController &screen, std::function<void()> then);

    QList<PickerAnswer> m_answers;
    QPointer<Screenshots> m_screenshots;
};

} // namespace zelkam
