#pragma once

#include <QJsonArray>
#include <QObject>
#include <QStringList>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>

namespace zelkam {

class HostApplication;
struct HostOptions;
class PickerAnswers;

/// Plays the demo unattended: presses each card's button in order, answers its picker, waits for
/// its replies, closes the preview by its Done button, and opens the share sheet where a card says
/// so. Prints each call with its replies.
class Tour : public QObject
{
    Q_OBJECT

public:
    /// Where the options name no pictures folder and no picture for the camera, the tour has its
    /// own: nothing is read from, or added to, what is the person's.
    Tour(HostApplication &host, PickerAnswers &answers, const HostOptions &options);

signals:
    /// The tour is over. The faults are replies that were not the expected ones, and things that
    /// did not happen in time.
    void finished(int faults);

private:
    void prepareDevice(const HostOptions &options);
    QString place(const QString &name, const QString &folder) const;
    void readCards();
    void playNext();
    void prepareAnswer();
    void press();
    void awaitScreen();
    void openShareSheet();
    void closeScreen();
    void endCard(const QString &fault);

    /// Goes on when the condition holds; ends the card with the fault when it does not in time.
    void waitUntil(std::function<bool()> condition, const QString &fault,
                   std::function<void()> then);
    bool isAtRest() const;

    HostApplication &m_host;
    PickerAnswers &m_answers;
    QTemporaryDir m_documents; ///< what a person would have on the device
    QTimer m_poll;
    QJsonArray m_cards;
    int m_card = -1;
    QStringList m_replies;
    int m_faults = 0;
};

} // namespace zelkam
