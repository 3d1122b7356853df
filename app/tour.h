#pragma once

#include <QJsonArray>
#include <QObject>
#include <QStringList>
#include <QTimer>
#include <functional>

namespace zelkam {

class HostApplication;

/// Plays the demo unattended: presses each card's button in order, waits for its replies, closes
/// the preview by its Done button, and opens the share sheet where a card says so. Prints each
/// call with its replies.
class Tour : public QObject
{
    Q_OBJECT

public:
    explicit Tour(HostApplication &host);

signals:
    /// The tour is over. The faults are replies that were not the expected ones, and things that
    /// did not happen in time.
    void finished(int faults);

private:
    void readCards();
    void playNext();
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
    QTimer m_poll;
    QJsonArray m_cards;
    int m_card = -1;
    QStringList m_replies;
    int m_faults = 0;
};

} // namespace zelkam
