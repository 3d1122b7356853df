#pragma once

#include "app/rough_server.h"

#include <QHttpServer>
#include <QUrl>

namespace zelkam {

/// The built-in demo: its page, and a server for it to download from, on a free port of this
/// machine's loopback address. Main thread.
///
///   GET  /files/<name>     the files of demo_files.h; 404 for any other
///   POST /orders/receipt   a PDF over what was sent
///   GET  /greeting         a text in the language of the header X-Greeting-Language
///   GET  /cookies/set      sets a cookie that script cannot see
///   GET  /cookies/list     a text with the cookies that came along
///   GET  /slow, /broken    lead on to the rough server
class DemoServer
{
public:
    DemoServer();

    /// Starts to listen and gives the page's address; an empty one when no port is to be had.
    QUrl start();

private:
    void addPage();
    void addFiles();
    void addAnswers();

    QHttpServer m_server;
    RoughServer m_roughServer;
};

} // namespace zelkam
