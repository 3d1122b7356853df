#include "app/demo_server.h"

#include "app/demo_files.h"

#include <QFile>
#include <QHttpServerResponse>

static void initResources()
{
    // A static library's resources are linked in only when somebody names them.
    Q_INIT_RESOURCE(zelkam_web);
}

namespace zelkam {

namespace {

using namespace Qt::StringLiterals;
using StatusCode = QHttpServerResponder::StatusCode;

QByteArray header(const QHttpServerRequest &request, const QByteArray &name)
{
    const auto headers = request.headers();
    for (const auto &[key, value] : headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return {};
}

QHttpServerResponse attachment(const DemoFile &file, const QByteArray &name)
{
    QHttpServerResponse response(file.mimeType, file.contents);
    response.addHeader("Content-Disposition"_ba, "attachment; filename=\""_ba + name + '"');
    return response;
}

QHttpServerResponse greeting(const QHttpServerRequest &request)
{
    const QByteArray language = header(request, "X-Greeting-Language"_ba);
    const QByteArray text = language == "fr"   ? "Bonjour et bonne travers\xc3\xa9"
                                                 "e !\n"_ba
                            : language == "de" ? "Guten Tag und gute Fahrt!\n"_ba
                                               : "Good day and a good crossing!\n"_ba;
    return attachment({text, "text/plain;charset=utf-8"_ba}, "greeting.txt"_ba);
}

QHttpServerResponse cookieList(const QHttpServerRequest &request)
{
    QByteArray text = "The server got these cookies:\n\n"_ba;
    const QByteArray cookies = header(request, "Cookie"_ba);
    for (const QByteArray &cookie : cookies.split(';'))
        text += "  "_ba + cookie.trimmed() + '\n';
    return attachment({text, "text/plain;charset=utf-8"_ba}, "cookies.txt"_ba);
}

} // namespace

DemoServer::DemoServer()
{
    initResources();
    addPage();
    addFiles();
    addAnswers();
}

QUrl DemoServer::start()
{
    const quint16 port = m_server.listen(QHostAddress::LocalHost);
    if (port == 0 || !m_roughServer.start())
        return {};
    return QUrl(u"http://127.0.0.1:%1/"_s.arg(port));
}

void DemoServer::addPage()
{
    struct Part
    {
        const char *path;
        const char *file;
        const char *type;
    };
    for (const Part &part :
         {Part{"/", "index.html", "text/html;charset=utf-8"},
          Part{"/demo.css", "demo.css", "text/css;charset=utf-8"},
          Part{"/demo.js", "demo.js", "text/javascript;charset=utf-8"},
          Part{"/cards.js", "cards.js", "text/javascript;charset=utf-8"},
          Part{"/previews.js", "previews.js", "text/javascript;charset=utf-8"}}) {
        QFile file(u":/zelkam/web/demo/"_s + QLatin1String(part.file));
        if (!file.open(QIODevice::ReadOnly))
            qFatal("The resource %s is missing.", part.file);
        m_server.route(QLatin1String(part.path),
                       [contents = file.readAll(), type = QByteArray(part.type)] {
                           return QHttpServerResponse(type, contents);
                       });
    }
}

void DemoServer::addFiles()
{
    m_server.route(u"/files/<arg>"_s, [](const QString &name) {
        const auto file = demoFile(name);
        return file ? QHttpServerResponse(file->mimeType, file->contents)
                    : QHttpServerResponse("text/plain"_ba, "No such file.\n"_ba,
                                          StatusCode::NotFound);
    });
}

void DemoServer::addAnswers()
{
    m_server.route(u"/orders/receipt"_s, QHttpServerRequest::Method::Post,
                   [](const QHttpServerRequest &request) {
                       const QByteArray type = header(request, "Content-Type"_ba);
                       return attachment(
                           demoReceipt(QString::fromUtf8(type), QString::fromUtf8(request.body())),
                           "receipt.pdf"_ba);
                   });
    m_server.route(u"/greeting"_s,
                   [](const QHttpServerRequest &request) { return greeting(request); });
    m_server.route(u"/cookies/list"_s,
                   [](const QHttpServerRequest &request) { return cookieList(request); });
    m_server.route(u"/cookies/set"_s, [] {
        QHttpServerResponse response("text/plain"_ba, "ok"_ba);
        response.addHeader("Set-Cookie"_ba, "hold=hidden; Path=/; HttpOnly"_ba);
        return response;
    });
    for (const QString &path : {u"/slow"_s, u"/broken"_s}) {
        m_server.route(path, [this, path] {
            QHttpServerResponse response(StatusCode::Found);
            const QString target =
                u"http://127.0.0.1:%1%2"_s.arg(m_roughServer.serverPort()).arg(path);
            response.addHeader("Location"_ba, target.toLatin1());
            return response;
        });
    }
}

} // namespace zelkam
