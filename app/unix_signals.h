#pragma once

#include <QObject>

namespace zelkam {

/// Turns SIGINT, SIGTERM and SIGHUP into a signal of the main thread, so that the program ends as
/// it does when its window is closed. One that is ignored from the start stays so. A second one of
/// that kind ends it at once. One object a program.
class UnixSignals : public QObject
{
    Q_OBJECT

public:
    UnixSignals();
    ~UnixSignals() override;

signals:
    void quitRequested();

private:
    int m_readEnd = -1;
};

} // namespace zelkam
