#include "host_process.h"
#include "support/http_test_server.h"

#include <QCryptographicHash>
#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

/// `pick(args)` gives the reply's data, `bytes(address)` what the page can load from there.
const QByteArray page = R"(<!doctype html><meta charset="utf-8"><title>Page</title>
<button>First</button><div style="height: 4000px"></div><script>
const pick = (args) => ZelkamMobile.exec('filePicker',
  { extension: '', multiselect: false, maxcount: 1, ...args });
const load = (address, type) => new Promise((done, fail) => {
  const request = new XMLHttpRequest();
  request.open('GET', address);
  request.responseType = type;
  request.onload = () => done(request.response);
  request.onerror = () => fail(new Error('not loaded'));
  request.send();
});
const hex = (buffer) => Array.from(new Uint8Array(buffer), b => b.toString(16).padStart(2, '0')).join('');
const bytes = async (address) => hex(await load(address, 'arraybuffer'));
const image = (address) => new Promise((done, fail) => {
  const element = new Image();
  element.onload = () => done([element.naturalWidth, element.naturalHeight]);
  element.onerror = () => fail(new Error('no image'));
  element.src = address;
});
const digest = async (buffer) => hex(await crypto.subtle.digest('SHA-256', buffer));
</script>)";

const QByteArray png = QByteArray::fromBase64(
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJg"
    "gg==");

} // namespace

/// A page in a real web view has pickers; the host answers them in a person's place.
class TestPagePicker : public QObject
{
    Q_OBJECT

private:
    HttpTestServer server;
    QTemporaryDir documents;

    QString write(const QString &name, const QByteArray &content)
    {
        QFile file(documents.filePath(name));
        QDir().mkpath(QFileInfo(file).path());
        file.open(QIODevice::WriteOnly);
        file.write(content);
        return file.fileName();
    }

    bool start(HostProcess &host, const QStringList &answers, const QStringList &options = {})
    {
        QStringList all = options;
        for (const QString &answer : answers)
            all << u"--answer-picker"_s << answer;
        return host.start(server.url(u"/page"_s), all);
    }

private slots:
    void initTestCase()
    {
        server.on("/page", HttpTestServer::answer(page, "Content-Type: text/html\r\n"));
    }

    void givesAddressesThatThePageCanLoad()
    {
        const QString image = write(u"My \"photo\" 100%#?.png"_s, png);
        const QString text = write(u"notes 🙂.txt"_s, "words");
        const QString sameName = write(u"other/notes 🙂.txt"_s, "other words");
        // Names that are longer than a name can be once they are encoded.
        const QString syllables = write(QString(60, u'문') + u".txt"_s, "syllables");
        const QString percents = write(QString(251, u'%') + u".txt"_s, "percents");
        // It would take the place of the downloads' folder, and is left out.
        const QString skipped = write(u"Download"_s, "x");
        HostProcess host;
        QVERIFY(start(host, {image, u"%1,%2"_s.arg(syllables, percents),
                             u"%1,%2,%3"_s.arg(text, skipped, image),
                             u"%1,%2"_s.arg(text, sameName), skipped, u"cancel"_s}));
        const auto single =
            host.run(u"window.scrollTo(0, 900);"
                     "const { fileUri } = await pick({ type: 1 });"
                     "await new Promise(done => setTimeout(done, 700));" // the screen has left
                     "return [await image(fileUri), await bytes(fileUri), scrollY]"_s);
        QCOMPARE(single, (QJsonArray{QJsonArray{1, 1}, QString::fromLatin1(png.toHex()), 900}));

        const auto named = host.run(u"const all = await pick({ multiselect: true });"
                                    "return Promise.all(all.map(bytes))"_s);
        QCOMPARE(named, (QJsonArray{QString::fromLatin1(QByteArray("syllables").toHex()),
                                    QString::fromLatin1(QByteArray("percents").toHex())}));
        const auto several = host.run(u"const all = await pick({ multiselect: true });"
                                      "return Promise.all(all.map(bytes))"_s);
        QCOMPARE(several, (QJsonArray{QString::fromLatin1(QByteArray("words").toHex()),
                                      QString::fromLatin1(png.toHex())}));
        const auto same = host.run(u"const [a, b] = await pick({ multiselect: true });"
                                   "return [a === b, await bytes(a)]"_s);
        QCOMPARE(same, (QJsonArray{true, QString::fromLatin1(QByteArray("other words").toHex())}));
        const auto failed = host.run(u"return pick({})"_s).toObject().value(u"rejected"_s);
        QCOMPARE(failed.toObject().value(u"status"_s), u"FILE_NOT_FOUND"_s);
        QCOMPARE(host.run(u"return [await pick({})].length"_s), 1);
    }

    void givesContentAndKeepsTheType()
    {
        const QString image = write(u"a.png"_s, png);
        const QString text = write(u"b c.txt"_s, "words");
        const QString skipped = write(u"Download"_s, "x");
        HostProcess host;
        QVERIFY(start(host, {image, text, u"%1,%2"_s.arg(text, skipped), text}));
        QCOMPARE(host.run(u"const r = await pick({ type: 0 });"
                          "return [r.fileName, await image(r.data)]"_s),
                 (QJsonArray{u"a.png"_s, QJsonArray{1, 1}}));
        const QJsonObject record{{u"data"_s, u"data:text/plain;base64,d29yZHM="_s},
                                 {u"fileName"_s, u"b c.txt"_s}};
        QCOMPARE(host.run(u"return pick({})"_s), record);
        QCOMPARE(host.run(u"return pick({ multiselect: true })"_s),
                 (QJsonArray{record, QJsonObject{{u"fileName"_s, QFileInfo(skipped).fileName()}}}));
        QVERIFY(host.run(u"return pick({ type: 2 })"_s).toObject().contains(u"fileUri"_s));
    }

    void picksWithTheTypesOfOlderSystems()
    {
        const QString photo = write(u"a.heic"_s, "photo");
        HostProcess host;
        QVERIFY(start(host, {photo, photo}, {u"--system-version"_s, u"13.5"_s}));
        QVERIFY(
            host.run(u"return pick({ extension: 'heic' })"_s).toObject().contains(u"fileUri"_s));
        // Only what is allowed can be picked; a picker that can pick nothing is cancelled.
        QCOMPARE(host.run(u"return [await pick({ extension: 'pdf' })].length"_s), 1);
    }

    void comesOverAPreviewThatIsStillOpen()
    {
        server.on("/a.txt", HttpTestServer::answer("hello"));
        const QString text = write(u"b.txt"_s, "words");
        HostProcess host;
        QVERIFY(start(host, {text}));
        QCOMPARE(host.run(u"await ZelkamMobile.exec('fileDownload', { url: 'a.txt' });"
                          "return bytes((await pick({})).fileUri)"_s),
                 QString::fromLatin1(QByteArray("words").toHex()));
    }

    void saysOnlyWhatIsWrong()
    {
        HostProcess host;
        QVERIFY(start(host, {}));
        for (const QString &wrong : {u"{ extension: 1 }"_s, u"{ multiselect: 'yes' }"_s,
                                     u"{ maxcount: 1.5 }"_s, u"{ maxcount: null }"_s}) {
            const auto rejected = host.run(u"return pick(%1)"_s.arg(wrong)).toObject();
            QCOMPARE(rejected.value(u"rejected"_s).toObject().value(u"status"_s),
                     u"INVALID_PARAM"_s);
        }
    }

    void carriesALargeFileByteForByte()
    {
        // Neither it nor its half or quarter is a multiple of three, where base64 could be cut.
        constexpr int size = 48 * 1024 * 1024 + 4;
        QByteArray content(size, Qt::Uninitialized);
        QRandomGenerator::global()->fillRange(reinterpret_cast<quint32 *>(content.data()),
                                              size / 4);
        const QString large = write(u"large.bin"_s, content);
        HostProcess host;
        QVERIFY(start(host, {large}));
        const auto result =
            host.run(u"const { data } = await pick({ type: 0 });"
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
};

QTEST_GUILESS_MAIN(TestPagePicker)
#include "tst_page_picker.moc"
