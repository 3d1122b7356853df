#include "toast/toast_turns.h"

#include <QBasicTimer>
#include <QCoreApplication>
#include <QPointer>

#include <deque>

namespace zelkam {

namespace {

// A child of the application object, so that it goes with the event loop.
class Turns : public QObject
{
public:
    Turns() : QObject(qApp) {}

    void add(std::function<void()> work)
    {
        m_waiting.push_back(std::move(work));
        m_timer.start(0, this);
    }

protected:
    void timerEvent(QTimerEvent *) override
    {
        constexpr int aTurn = 16;
        for (int done = 0; done < aTurn && !m_waiting.empty(); ++done) {
            const auto work = std::move(m_waiting.front());
            m_waiting.pop_front();
            work();
        }
        if (m_waiting.empty())
            m_timer.stop();
    }

private:
    std::deque<std::function<void()>> m_waiting;
    QBasicTimer m_timer;
};

} // namespace

void runInTurn(std::function<void()> work)
{
    static QPointer<Turns> turns;
    if (!turns)
        turns = new Turns;
    turns->add(std::move(work));
}

} // namespace zelkam
