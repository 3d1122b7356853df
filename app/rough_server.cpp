#include "app/rough_server.h"

#include <QTcpSocket>
#include <QTimer>
#include <chrono>

namespace zelkam {

namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr int pieces = 20;
constexpr auto pieceTime = 100ms;
constexpr qsizetype longestRequest = 16 * 1024;

QByteArray head(qsizetype length, const QByteArray &name)
{
    return "HTTP/1.1 200 OK\r\nContent-Type: text/plain;charset=utf-8\r\nContent-Disposition: "
           "attachment; filename=\""_ba +
           name + "\"\r\nContent-Length: "_ba + QByteArray::number(length) +
           "\r\nConnection: close\r\n\r\n"_ba;
}

void answerSlowly(QTcpSocket *socket)
{
    const QByteArray piece = "One piece after another, with patience.\n"_ba;
    socket->write(head(pieces * piece.size(), "patience.txt"_ba));
    auto *timer = new QTimer(socket);
    QObject::connect(timer, &QTimer::timeout, socket,
                     [socket, timer, piece, left = pieces]() mutable {
                         socket->write(piece);
                         if (--left == 0) {
                             timer->stop();
                             socket->disconnectFromHost();
                         }
                     });
    timer->start(pieceTime);
}

} // namespace

RoughServer::RoughServer()
{
    connect(this, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket *socket = nextPendingConnection()) {
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { serve(socket); });
        }
    });
}

bool RoughServer::start()
{
    return listen(QHostAddress::LocalHost);
}

void RoughServer::serve(QTcpSocket *socket)
{
    const QByteArray request = socket->peek(longestRequest);
    if (!request.contains("\r\n\r\n") && request.size() < longestRequest)
        return;
    socket->disconnect(this);
    if (request.startsWith("GET /slow ")) {
        answerSlowly(socket);
        return;
    }
    constexpr qsizetype promised = 100'000;
    socket->write(head(promised, "broken.txt"_ba) + QByteArray(promised / 10, 'x'));
    socket->disconnectFromHost();
}

} // namespace zelkam
