#include "support/http_test_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

QByteArray HttpTestServer::Request::header(const char *name) const
{
    for (const QByteArray &line : head.split('\n')) {
        const qsizetype colon = line.indexOf(':');
        if (colon > 0 && line.left(colon).compare(name, Qt::CaseInsensitive) == 0)
            return line.mid(colon + 1).trimmed() + ""; // not null, even when empty
    }
    return {};
}

void HttpTestServer::Connection::send(const QByteArray &bytes)
{
    for (qsizetype sent = 0; sent < bytes.size() && isOpen();) {
        const auto size = static_cast<std::size_t>(bytes.size() - sent);
        const ssize_t count = ::send(m_socket, bytes.constData() + sent, size, MSG_NOSIGNAL);
        m_isOpen = count > 0;
        sent += count;
    }
}

void HttpTestServer::Connection::pause(std::chrono::milliseconds time)
{
    std::unique_lock lock(m_server.m_mutex);
    m_server.m_stopped.wait_for(lock, time, [this] { return m_server.m_stopping.load(); });
}

HttpTestServer::HttpTestServer(bool everywhere)
{
    m_listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(everywhere ? INADDR_ANY : INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto *generic = reinterpret_cast<sockaddr *>(&address);
    if (::bind(m_listener, generic, size) != 0 || ::listen(m_listener, 128) != 0 ||
        ::getsockname(m_listener, generic, &size) != 0)
        qFatal("The test server cannot listen.");
    m_port = ntohs(address.sin_port);
    m_acceptor = std::thread(&HttpTestServer::acceptConnections, this);
}

HttpTestServer::~HttpTestServer()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
        ::shutdown(m_listener, SHUT_RDWR);
        for (const int socket : m_sockets)
            ::shutdown(socket, SHUT_RDWR);
    }
    m_stopped.notify_all();
    m_acceptor.join();
    for (std::thread &connection : m_connections)
        connection.join();
    for (const int socket : m_sockets)
        ::close(socket);
    ::close(m_listener);
}

void HttpTestServer::on(const QByteArray &path, Script script)
{
    const std::lock_guard lock(m_mutex);
    m_scripts.insert(path, std::move(script));
}

void HttpTestServer::on(const QByteArray &path, const QByteArray &rawAnswer)
{
    on(path, [rawAnswer](const Request &, Connection &connection) { connection.send(rawAnswer); });
}

QString HttpTestServer::url(const QString &path, const QString &host) const
{
    return QStringLiteral("http://%1:%2%3").arg(host).arg(m_port).arg(path);
}

QList<HttpTestServer::Request> HttpTestServer::requests() const
{
    const std::lock_guard lock(m_mutex);
    return m_requests;
}

QByteArray HttpTestServer::answer(const QByteArray &body, const QByteArray &headerLines,
                                  const QByteArray &status)
{
    return "HTTP/1.1 " + status +
           "\r\nConnection: close\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n" +
           headerLines + "\r\n" + body;
}

QByteArray HttpTestServer::html(const QByteArray &page, const QByteArray &headerLines)
{
    return answer(page, "Content-Type: text/html\r\n" + headerLines);
}

QByteArray HttpTestServer::redirect(const QByteArray &status, const QString &location,
                                    const QByteArray &headerLines)
{
    return answer({}, "Location: " + location.toUtf8() + "\r\n" + headerLines, status);
}

void HttpTestServer::acceptConnections()
{
    for (;;) {
        const int socket = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0)
            return;
        const std::lock_guard lock(m_mutex);
        m_sockets.push_back(socket);
        if (m_stopping)
            return;
        m_connections.emplace_back(&HttpTestServer::serve, this, socket);
    }
}

void HttpTestServer::serve(int socket)
{
    Request request;
    if (readRequest(socket, request)) {
        Script script;
        {
            const std::lock_guard lock(m_mutex);
            m_requests.append(request);
            script = m_scripts.value(request.target.split('?').first());
        }
        Connection connection(*this, socket);
        if (script)
            script(request, connection);
        else
            connection.send(answer("not here", {}, "404 Not Found"));
    }
    ::shutdown(socket, SHUT_WR);
}

bool HttpTestServer::readRequest(int socket, Request &request)
{
    QByteArray bytes;
    qsizetype bodyStart = -1;
    qsizetype bodySize = 0;
    while (bodyStart < 0 || bytes.size() < bodyStart + bodySize) {
        char buffer[16384];
        const ssize_t count = ::recv(socket, buffer, sizeof buffer, 0);
        if (count <= 0)
            return false;
        bytes.append(buffer, count);
        const qsizetype end = bodyStart < 0 ? bytes.indexOf("\r\n\r\n") : -1;
        if (end < 0)
            continue;
        bodyStart = end + 4;
        const qsizetype lineEnd = bytes.indexOf("\r\n");
        const QList<QByteArray> requestLine = bytes.left(lineEnd).split(' ');
        request.method = requestLine.value(0);
        request.target = requestLine.value(1);
        request.head = bytes.mid(lineEnd + 2, end - lineEnd);
        bodySize = request.header("Content-Length").toLongLong();
    }
    request.body = bytes.mid(bodyStart, bodySize);
    return true;
}
