#pragma once

#include <QTcpServer>

class QTcpSocket;

namespace zelkam {

/// Answers as no proper server does, for the demo: "/slow" comes piece by piece over two seconds,
/// anything else ends in the middle. On a free port of the loopback address. Main thread.
class RoughServer : public QTcpServer
{
    Q_OBJECT

public:
    RoughServer();

    /// Whether a port could be had.
    bool start();

private:
    void serve(QTcpSocket *socket);
};

} // namespace zelkam
