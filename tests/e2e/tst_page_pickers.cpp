#include "host_process.h"
#include "platform/images/picture_comparison.h"
#include "support/data_table.h"
#include "support/http_test_server.h"
#include "support/sample_files.h"

#include <QCryptographicHash>
#include <QDir>
#include <QRandomGenerator>

using namespace zelkam::test;
using namespace Qt::StringLiterals;

namespace {

QImage decoded(const QJsonValue &url)
{
    const QByteArray text = url.toString().toLatin1();
    return QImage::fromData(QByteArray::fromBase64(text.mid(text.indexOf(',') + 1)));
}

/// What a lossy coding may change of a channel.
constexpr int tolerance = 24;

} // namespace

/// A page in a real web view has pickers; the host answers them in a person's place.
class TestPagePickers : public QObject
{
    Q_OBJECT

private:
    HttpTestServer server;
    std::unique_ptr<HostProcess> host;

    QString write(const QString &name, const QByteArray &content)
    {
        const QString path = QDir(host->picturesDirectory()).filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        return sample::write(path, content) ? path : QString();
    }
    QString write(const QString &name, const QImage &image)
    {
        QBuffer buffer;
        image.save(&buffer, "png");
        return write(name,
                     name.endsWith(u"heic") ? dataFile(u"heif/upright.heic"_s) : buffer.data());
    }
    bool start(const QStringList &answers, QStringList options = {})
    {
        for (const QString &answer : answers)
            options << u"--answer-picker"_s << answer;
        return host->start(server.url(u"/page"_s), options);
    }

private slots:
    void initTestCase()
    {
        server.on("/page", HttpTestServer::html(dataFile(u"e2e/page.html"_s)));
        server.on("/a.txt", HttpTestServer::answer("hello"));
    }
    void init() { host = std::make_unique<HostProcess>(); }
    void cleanup() { host.reset(); }

    void givesFilesThatThePageCanLoad()
    {
        const QString image =
            write(u"My \"photo\" 100%#?.png"_s, QImage(3, 2, QImage::Format_RGB32));
        const QString text = write(u"notes 🙂.txt"_s, "words");
        // It would take the place of the downloads' folder, and is left out.
        const QString skipped = write(u"Download"_s, "x");
        QVERIFY(start({image, u"%1,%2,%3"_s.arg(text, skipped, image), image, text, u"cancel"_s,
                       text, text, text},
                      {u"--system-version"_s, u"13.5"_s}));
        QCOMPARE(
            host->run(u"window.scrollTo(0, 900);"
                      "const { fileUri } = await pickFile({ type: 1 });"
                      "await new Promise(done => setTimeout(done, 700));" // the screen has left
                      "return [await shown(fileUri), scrollY]"_s),
            (QJsonArray{u"3x2"_s, 900}));
        QCOMPARE(host->run(u"const [text, image, ...more] = await pickFile({ multiselect: true });"
                           "return [await words(text), await shown(image), more.length]"_s),
                 (QJsonArray{u"words"_s, u"3x2"_s, 0}));
        QCOMPARE(host->run(u"const { fileName, data } = await pickFile({ type: 0 });"
                           "return [fileName, await shown(data)]"_s),
                 (QJsonArray{QFileInfo(image).fileName(), u"3x2"_s}));
        QCOMPARE(host->run(u"return pickFile({})"_s),
                 (QJsonObject{{u"data"_s, u"data:text/plain;base64,d29yZHM="_s},
                              {u"fileName"_s, QFileInfo(text).fileName()}}));
        QCOMPARE(host->run(u"return [await pickFile({})].length"_s), 1);
        // A system of this age knows no type for HEIC, and so allows all.
        QVERIFY(host->run(u"return pickFile({ extension: 'heic', type: 1 })"_s)
                    .toObject()
                    .contains(u"fileUri"_s));
        // Only what is allowed can be picked; a picker that can pick nothing is cancelled.
        QCOMPARE(host->run(u"return [await pickFile({ extension: 'pdf' })].length"_s), 1);
        // Over a preview that is still open.
        QCOMPARE(host->run(u"await ZelkamMobile.exec('fileDownload', { url: 'a.txt' });"
                           "return words((await pickFile({ type: 1 })).fileUri)"_s),
                 u"words"_s);
    }

    void carriesALargeFileByteForByte()
    {
        // Neither it nor its half or quarter is a multiple of three, where base64 could be cut.
        constexpr int size = 48 * 1024 * 1024 + 4;
        QByteArray content(size, Qt::Uninitialized);
        QRandomGenerator::global()->fillRange(reinterpret_cast<quint32 *>(content.data()),
                                              size / 4);
        QVERIFY(start({write(u"large.bin"_s, content)}));
        const auto result =
            host->run(u"const { data } = await pickFile({ type: 0 });"
                      "const head = data.slice(0, data.indexOf(',') + 1);"
                      "const text = atob(data.slice(head.length));"
                      "const found = new Uint8Array(text.length);"
                      "for (let i = 0; i < text.length; i += 1) found[i] = text.charCodeAt(i);"
                      "return [head, await digest(found)]"_s,
                      60000);
        const QByteArray expected = QCryptographicHash::hash(content, QCryptographicHash::Sha256);
        QCOMPARE(result, (QJsonArray{u"data:application/octet-stream;base64,"_s,
                                     QString::fromLatin1(expected.toHex())}));
    }

    void picksAndTakesPhotos()
    {
        const QList<QImage> sources{corners({480, 320}), corners({320, 480})};
        const QString png = write(u"a.png"_s, sources.at(0));
        const QString photo = write(u"b.heic"_s, sources.at(1));
        const QImage scene = corners({400, 400});
        QVERIFY(start(
            {photo, u"%1,%2"_s.arg(png, photo), u"cancel"_s, u"cancel"_s, u"photo"_s, u"photo"_s},
            {u"--camera-image"_s, write(u"../scene.png"_s, scene)}));
        const auto one = host->run(u"return pickImage({})"_s)[u"image"];
        QVERIFY(one.toString().startsWith(u"data:image/jpeg;base64,"));
        QCOMPARE_LE(difference(decoded(one), sources.at(1)), tolerance);

        const auto both = host->run(u"const urls = await pickImage({ multiselect: true });"
                                    "return [urls, await Promise.all(urls.map(shown))]"_s);
        QCOMPARE(both[1], (QJsonArray{u"480x320"_s, u"320x480"_s}));
        for (int i = 0; i < 2; ++i)
            QCOMPARE_LE(difference(decoded(both[0][i]), sources.at(i)), tolerance);

        const QString cancelled = u"return pickImage({ multiselect: %1 })"_s;
        QCOMPARE(host->run(cancelled.arg(u"false"_s))[u"rejected"][u"status"], u"2041"_s);
        QCOMPARE(host->run(cancelled.arg(u"true"_s))[u"rejected"][u"status"], u"2045"_s);

        // The second photo is taken through the tile in the library, where it stays.
        for (const QString &several : {u"false"_s, u"true"_s}) {
            const auto taken =
                host->run(u"return pickImage({ camera: true, multiselect: %1 })"_s.arg(several));
            QCOMPARE_LE(difference(decoded(taken[u"image"]), scene), tolerance);
        }
        QCOMPARE(QDir(host->picturesDirectory()).entryList(QDir::Files).size(), 3);
    }
};

QTEST_MAIN(TestPagePickers)
#include "tst_page_pickers.moc"
