#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

/// An HTTP server on the loopback interface for tests, with threads of its own. What it answers
/// is scripted byte by byte, so it can be as slow, broken or hostile as the test needs.
/// Each connection serves one request and is then closed.
class HttpTestServer
{
public:
    struct Request
    {
        QByteArray method;
        QByteArray target; ///< path and query
        QByteArray head;   ///< the header lines, without the request line
        QByteArray body;

        /// A header's value, its name compared without case; null when it was not sent.
        QByteArray header(const char *name) const;
    };

    /// The way to the client, for a script. Once the server stops, its calls return at once.
    class Connection
    {
    public:
        void send(const QByteArray &bytes);
        void pause(std::chrono::milliseconds time);
        /// Whether the client is still there, and the server too.
        bool isOpen() const { return m_isOpen && !m_server.m_stopping; }

    private:
        friend class HttpTestServer;
        Connection(HttpTestServer &server, int socket) : m_server(server), m_socket(socket) {}
        HttpTestServer &m_server;
        int m_socket;
        bool m_isOpen = true;
    };

    using Script = std::function<void(const Request &, Connection &)>;

    /// Listens on the loopback interface, or at every address of the machine.
    explicit HttpTestServer(bool everywhere = false);
    ~HttpTestServer();
    HttpTestServer(const HttpTestServer &) = delete;
    HttpTestServer &operator=(const HttpTestServer &) = delete;

    /// Answers a path (without query) from now on; others get a 404.
    void on(const QByteArray &path, Script script);
    /// Answers with these bytes, whatever they are.
    void on(const QByteArray &path, const QByteArray &rawAnswer);

    int port() const { return m_port; }
    /// The address of a path, under another name of the same server if one is given.
    QString url(const QString &path, const QString &host = QStringLiteral("127.0.0.1")) const;

    QList<Request> requests() const; ///< all so far, in the order of arrival

    /// A well-formed answer with a Content-Length. Header lines end with "\r\n".
    static QByteArray answer(const QByteArray &body, const QByteArray &headerLines = {},
                             const QByteArray &status = "200 OK");
    /// A page.
    static QByteArray html(const QByteArray &page, const QByteArray &headerLines = {});
    /// A redirect without a body.
    static QByteArray redirect(const QByteArray &status, const QString &location,
                               const QByteArray &headerLines = {});

private:
    void acceptConnections();
    void serve(int socket);
    bool readRequest(int socket, Request &request);

    int m_listener = -1;
    int m_port = 0;
    std::atomic<bool> m_stopping = false;
    mutable std::mutex m_mutex; // guards the rest
    std::condition_variable m_stopped;
    QMap<QByteArray, Script> m_scripts;
    QList<Request> m_requests;
    std::vector<int> m_sockets;
    std::vector<std::thread> m_connections;
    std::thread m_acceptor;
};
