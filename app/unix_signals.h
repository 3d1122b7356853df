#pragma once

#include <QObject>

namespace zelkam {

/// Turns SIGINT and SIGTERM into a signal of the main thread, so that the program ends as it does
/// when its window is closed. A second one of either kind ends it at once. One object a program.
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
