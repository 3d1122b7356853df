#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <optional>

namespace zelkam {

class Screenshots;
class UIViewController;
class UIWindow;

/// The files to pick in one picker, by absolute path; nothing to cancel it.
using PickerAnswer = std::optional<QStringList>;

/// Answers pickers in the place of a person, so that pages can be tried unattended. The real
/// screen appears, the selection is made in it, and then it is accepted. Each answer is for one
/// picker, in the order in which the pickers appear; where no answer is left, a picker waits for
/// a person. A picker that can pick none of its files is cancelled.
class PickerAnswers : public QObject
{
    Q_OBJECT

public:
    /// @param screenshots  takes a picture of each selection before it is accepted; may be null
    PickerAnswers(UIWindow &window, Screenshots *screenshots);

    void append(const PickerAnswer &answer) { m_answers.append(answer); }

private:
    void answer(UIViewController *screen);
    void afterPicture(UIViewController *screen, void (*then)(UIViewController *screen));

    QList<PickerAnswer> m_answers;
    QPointer<Screenshots> m_screenshots;
};

} // namespace zelkam
