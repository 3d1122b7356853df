// Every allocation of the network thread fails once: those that our own code makes with new, and
// those of curl. Qt's containers take their memory elsewhere and end the program without it.
#include "download_probe.h"
#include "platform/foundation/file_manager.h"
#include "support/http_test_server.h"

#include <QDir>
#include <QTemporaryDir>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <curl/curl.h>
#include <new>
#include <pthread.h>

using namespace zelkam;
using namespace Qt::StringLiterals;

namespace {

std::atomic<int> allocationsLeft = -1; ///< until one fails; negative for none

bool isToFail()
{
    if (allocationsLeft.load() < 0)
        return false;
    char name[16] = "";
    ::pthread_getname_np(::pthread_self(), name, sizeof name);
    return std::strcmp(name, "zelkam-network") == 0 && allocationsLeft.fetch_sub(1) == 0;
}

void *allocate(std::size_t size)
{
    return isToFail() ? nullptr : std::malloc(size);
}

} // namespace

void *operator new(std::size_t size)
{
    if (void *memory = allocate(size))
        return memory;
    throw std::bad_alloc();
}
void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    return allocate(size);
}
void operator delete(void *memory) noexcept
{
    std::free(memory);
}
void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

class TestOutOfMemory : public QObject
{
    Q_OBJECT

private slots:
    void everyDownloadEnds()
    {
        QCOMPARE(curl_global_init_mem(
                     CURL_GLOBAL_DEFAULT, &allocate, &std::free,
                     [](void *memory, std::size_t size) {
                         return isToFail() ? nullptr : std::realloc(memory, size);
                     },
                     [](const char *text) { return isToFail() ? nullptr : ::strdup(text); },
                     [](std::size_t count, std::size_t size) {
                         return isToFail() ? nullptr : std::calloc(count, size);
                     }),
                 CURLE_OK);
        QTemporaryDir folder;
        QVERIFY(!setTemporaryDirectory(folder.path()));
        HttpTestServer server;
        server.on("/", HttpTestServer::redirect("302 F", u"/end"_s, "Set-Cookie: a=1; Path=/\r\n"));
        const QByteArray hello =
            QByteArray::fromHex("1f8b0800000000000003cb48cdc9c9070086a6103605000000");
        server.on("/end", HttpTestServer::answer(hello, "Content-Encoding: gzip\r\n"));
        URLRequest request = requestFor(server.url(u"/"_s));
        request.setValue(u"1"_s, u"X-A"_s);
        QCOMPARE(download(request).data, "hello");

        int failures = 0;
        for (int i = 0, left = -1; left < 0; ++i) {
            allocationsLeft = i;
            const Outcome outcome = download(request);
            left = allocationsLeft.exchange(-1);
            QVERIFY2(outcome.calls == 1, qPrintable(QString::number(i)));
            failures += outcome.error.has_value();
            QCOMPARE(outcome.data, outcome.error ? QByteArray() : QByteArray("hello"));
            QTRY_VERIFY(QDir(folder.path()).isEmpty());
        }
        QVERIFY2(failures > 50, qPrintable(QString::number(failures)));
        QCOMPARE(download(request).data, "hello");
    }
};

QTEST_GUILESS_MAIN(TestOutOfMemory)
#include "tst_out_of_memory.moc"
