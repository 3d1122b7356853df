#include "host_process.h"
#include "platform/images/heif_writer.h"
#include "platform/images/picture_comparison.h"
#include "support/http_test_server.h"

#include <QDir>
#include <QImageWriter>
#include <QJsonArray>
#include <QJsonObject>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace zelkam::test;

namespace {

/// `shown(url)` is the size that the page's own decoder makes of a data URL.
const QByteArray page = R"(<!doctype html><meta charset="utf-8"><title>Page</title><script>
const pick = (args) => ZelkamMobile.exec('imagePicker', args);
const shown = (url) => new Promise((done, fail) => {
  const image = new Image();
  image.onload = () => done(image.naturalWidth + 'x' + image.naturalHeight);
  image.onerror = () => fail(new Error('no image'));
  image.src = url;
});
</script>)";

QImage decoded(const QJsonValue &url)
{
    const QByteArray text = url.toString().toLatin1();
    return QImage::fromData(QByteArray::fromBase64(text.mid(text.indexOf(',') + 1)));
}

/// What a lossy coding may change of a channel.
constexpr int tolerance = 24;

} // namespace

/// A page in a real web view takes and picks photos; the host answers in a person's place.
class TestPageImages : public QObject
{
    Q_OBJECT

private:
    HttpTestServer server;

    static QString write(HostProcess &host, const QString &name, const QImage &image)
    {
        QDir().mkpath(host.picturesDirectory());
        const QString path = QDir(host.picturesDirectory()).filePath(name);
        if (!name.endsWith(u"heic")) {
            QImageWriter writer(path);
            writer.setQuality(95);
            writer.write(image);
            return path;
        }
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.write(heic(image));
        return path;
    }

private slots:
    void initTestCase()
    {
        server.on("/page", HttpTestServer::answer(page, "Content-Type: text/html\r\n"));
    }

    void picksOneAndThree()
    {
        const QList<QImage> sources{corners({480, 320}), corners({320, 480}), corners({400, 400})};
        HostProcess host;
        const QString jpeg = write(host, u"a.jpg"_s, sources.at(0));
        const QString heif = write(host, u"b.heic"_s, sources.at(1));
        const QString png = write(host, u"c.png"_s, sources.at(2));
        const QString three = u"%1,%2,%3"_s.arg(png, jpeg, heif);
        QVERIFY(host.start(server.url(u"/page"_s),
                           {u"--answer-picker"_s, heif, u"--answer-picker"_s, three,
                            u"--answer-picker"_s, three, u"--answer-picker"_s, jpeg}));

        const QJsonObject one = host.run(u"return pick({})"_s).toObject();
        QCOMPARE(one.keys(), {u"image"_s});
        QVERIFY(one.value(u"image"_s).toString().startsWith(u"data:image/jpeg;base64,"));
        QCOMPARE_LE(difference(decoded(one.value(u"image"_s)), sources.at(1)), tolerance);

        const QJsonArray all = host.run(u"const urls = await pick({ multiselect: true });"
                                        "return [urls, await Promise.all(urls.map(shown))]"_s)
                                   .toArray();
        QCOMPARE(all.at(1), (QJsonArray{u"400x400"_s, u"480x320"_s, u"320x480"_s}));
        const QList<int> order{2, 0, 1};
        for (int i = 0; i < order.size(); ++i)
            QCOMPARE_LE(difference(decoded(all.at(0)[i]), sources.at(order.at(i))), tolerance);
        QVERIFY(all.at(0)[0].toString().startsWith(u"data:image/png;"));

        const QJsonArray small = host.run(u"return pick({ multiselect: true, resizeWidth: 90,"
                                          "resizeHeight: 60, resizeQuality: 0.9 })"_s)
                                     .toArray();
        QCOMPARE(small.size(), 3);
        for (const auto &url : small)
            QCOMPARE_LE(difference(decoded(url), corners({90, 60})), tolerance);

        const QJsonObject single = host.run(u"return pick({ multiselect: true })"_s).toObject();
        QCOMPARE_LE(difference(decoded(single.value(u"image"_s)), sources.at(0)), tolerance);
    }

    void takesPhotos()
    {
        HostProcess host;
        const QImage scene = corners({480, 320});
        const QString before = write(host, u"before.jpg"_s, corners({64, 64}));
        QImageWriter(host.temporaryDirectory() + u".png"_s).write(scene);
        QVERIFY(host.start(server.url(u"/page"_s),
                           {u"--camera-image"_s, host.temporaryDirectory() + u".png"_s,
                            u"--answer-picker"_s, u"photo"_s, u"--answer-picker"_s, u"photo"_s}));
        const QJsonObject taken = host.run(u"return pick({ camera: true })"_s).toObject();
        QCOMPARE_LE(difference(decoded(taken.value(u"image"_s)), scene), tolerance);
        // Through the tile in the library, where it stays.
        const QJsonObject joined =
            host.run(u"return pick({ camera: true, multiselect: true })"_s).toObject();
        QCOMPARE_LE(difference(decoded(joined.value(u"image"_s)), scene), tolerance);
        QCOMPARE(QDir(host.picturesDirectory()).entryList(QDir::Files).size(), 2);
        QVERIFY(QFile::exists(before));
    }

    void cancelsAreErrorsOfTheirOwn()
    {
        HostProcess host;
        QVERIFY(host.start(server.url(u"/page"_s),
                           {u"--answer-picker"_s, u"cancel"_s, u"--answer-picker"_s, u"cancel"_s}));
        const auto status = [&host](const QString &arguments) {
            const auto rejected = host.run(u"return pick(%1)"_s.arg(arguments)).toObject();
            return rejected.value(u"rejected"_s).toObject().value(u"status"_s).toString();
        };
        QCOMPARE(status(u"{}"_s), u"2041"_s);
        QCOMPARE(status(u"{ multiselect: true }"_s), u"2045"_s);
    }
};

QTEST_MAIN(TestPageImages)
#include "tst_page_images.moc"
