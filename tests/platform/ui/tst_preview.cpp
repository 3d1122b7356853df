#include "platform/images/svg/svg_guard.h"
#include "platform/ui/image_view.h"
#include "platform/ui/pdf_view.h"
#include "platform/ui/preview_file.h"
#include "platform/ui/ql_preview_controller.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_window.h"
#include "support/sample_files.h"

#include <QAbstractButton>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>
#include <sys/stat.h>

using namespace zelkam;

namespace {

struct Item : QLPreviewItem
{
    explicit Item(const QString &path) : url(URL::fromFilePath(path)) {}
    std::optional<URL> previewItemURL() const override { return url; }
    std::optional<QString> previewItemTitle() const override { return QStringLiteral("<b>t</b>"); }
    URL url;
};

struct Source : QLPreviewControllerDataSource
{
    int numberOfPreviewItems(QLPreviewController *) override { return int(items.size()); }
    std::shared_ptr<QLPreviewItem> previewController(QLPreviewController *, int index) override
    {
        return items.at(index);
    }
    QList<std::shared_ptr<Item>> items;
};

QByteArray svg(const QByteArray &body)
{
    return R"(<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" )"
           R"(width="20" height="10">)" +
           body + "</svg>";
}

} // namespace

class PreviewTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(m_folder.isValid());
        m_window = std::make_unique<UIWindow>();
        m_window->resize(390, 844);
        m_source = std::make_shared<Source>();
        m_controller = std::make_shared<QLPreviewController>();
        m_window->setRootViewController(m_controller);
        m_window->show();
    }
    void cleanup()
    {
        m_controller.reset();
        m_window.reset();
    }

    void aFileIsShownByWhatItIs_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("view");
        QTest::addColumn<QString>("problem");
        const auto row = [](const char *title, const QByteArray &bytes, const char *name,
                            const char *view, const char *problem = "") {
            QTest::newRow(title) << bytes << QString::fromLatin1(name) << QString::fromLatin1(view)
                                 << QString::fromLatin1(problem);
        };
        const QByteArray wav = QByteArray("RIFF\x24\0\0\0WAVEfmt \x10\0\0\0\1\0\1\0\x40\x1f\0\0"
                                          "\x40\x1f\0\0\1\0\x08\0data\0\0\0\0",
                                          44);
        row("an image", sample::image({30, 20}, "png"), "a.png", "ImageView");
        row("an image with a document's name", sample::image({30, 20}, "jpeg"), "a.pdf",
            "ImageView");
        row("a document with a text's name", sample::pdf(2), "a.txt", "PdfView");
        row("a vector image", svg("<rect width='9' height='9'/>"), "a.svg", "ImageView");
        row("the same behind a long comment",
            "<!--" + QByteArray(5000, 'x') + "-->" + svg("<rect width='9' height='9'/>"), "a.svg",
            "ImageView");
        row("a vector image that grows without bounds is shown as its text",
            svg("<g id='a'><use xlink:href='#a'/></g>"), "b.svg", "TextView");
        row("a page of the web is text", "<html><script>alert(1)</script>", "a.html", "TextView");
        row("a page of the web that says it is an image", "<html><body>", "a.png", "FileInfoView",
            "damaged");
        row("a play list is text", "#EXTM3U\nhttp://127.0.0.1/x\n", "a.m3u", "TextView");
        row("a script of a language whose suffix is a video's", "let a = 1;\n", "a.ts", "TextView");
        row("sound", wav, "a.wav", "MediaView");
        row("an archive", QByteArray("PK\3\4\0\0\0\0", 8), "a.zip", "FileInfoView");
        row("bytes of no kind", QByteArray(100, '\0'), "a", "FileInfoView");
        row("nothing", {}, "empty.txt", "TextView");
        row("a name that begins as an image does", "BMW and other cars", "a.txt", "TextView");
        row("an image cut short", sample::image({300, 200}, "png").left(200), "c.png",
            "FileInfoView", "damaged");
        row("an image of thirty thousand rows and columns", sample::pngHeader(30000, 30000),
            "bomb.png", "FileInfoView", "too large");
        row("a document cut short", sample::pdf(1).left(60), "c.pdf", "FileInfoView", "damaged");
    }
    void aFileIsShownByWhatItIs()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, name);
        QFETCH(QString, view);
        QFETCH(QString, problem);
        const QString path = m_folder.filePath(name);
        QVERIFY(sample::write(path, bytes));
        show({path});
        QCOMPARE(shownClass(), view);
        QVERIFY2(shown()->accessibleDescription().contains(problem),
                 qPrintable(shown()->accessibleDescription()));
    }

    void whatIsNoFileIsRefusedWithoutWaiting_data()
    {
        QTest::addColumn<QString>("path");
        const QString pipe = m_folder.filePath(QStringLiteral("pipe.png"));
        ::mkfifo(QFile::encodeName(pipe).constData(), 0600);
        QTest::newRow("a pipe that nobody writes to") << pipe;
        QTest::newRow("a device without an end") << QStringLiteral("/dev/zero");
        QTest::newRow("a folder") << m_folder.path();
        QTest::newRow("a file that is gone") << m_folder.filePath(QStringLiteral("gone.png"));
    }
    void whatIsNoFileIsRefusedWithoutWaiting()
    {
        QFETCH(QString, path);
        show({path});
        QCOMPARE(shownClass(), QStringLiteral("FileInfoView"));
    }

    void anImageIsZoomedAndMovedWithinItsBounds()
    {
        const QString path = m_folder.filePath(QStringLiteral("wide.jpg"));
        QVERIFY(sample::write(path, sample::turnedJpeg({400, 1200}))); // upright: 1200 x 400
        show({path});
        auto *view = qobject_cast<ImageView *>(shown());
        const auto colorAt = [view](int x, int y) {
            return view->grab().toImage().pixelColor(x, y);
        };
        QVERIFY(colorAt(195, 422).red() > 200 && colorAt(195, 422).green() < 60);
        QVERIFY(colorAt(195, 422 - 80).green() > 60); // 390 x 130 in the middle
        QTest::mouseDClick(view, Qt::LeftButton, {}, {195, 422});
        QCOMPARE(view->zoom(), 2.5);
        QVERIFY(colorAt(195, 422 - 80).green() < 60);
        QTest::mousePress(view, Qt::LeftButton, {}, {195, 422});
        QTest::mouseMove(view, {3000, 422});
        QVERIFY(colorAt(5, 422).green() < 60); // its left edge, not beyond
        QTest::mouseRelease(view, Qt::LeftButton);
        QTest::keyClick(view, Qt::Key_0);
        QCOMPARE(view->zoom(), 1.0);
        QWheelEvent wheel({195, 422}, view->mapToGlobal(QPointF(195, 422)), {}, {0, 100000}, {}, {},
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(view, &wheel);
        QVERIFY(view->zoom() > 1.0 && view->zoom() < 100.0);
    }

    void aDocumentsPagesAreDrawnAndZoomed()
    {
        const QString path = m_folder.filePath(QStringLiteral("pages.pdf"));
        QVERIFY(sample::write(path, sample::pdf(3)));
        show({path});
        auto *view = qobject_cast<PdfView *>(shown());
        QTRY_VERIFY(view->isSharp());
        QCOMPARE(view->grab().toImage().pixelColor(195, 200), QColor(Qt::blue));
        QTest::keyClick(view, Qt::Key_Plus);
        QVERIFY(!view->isSharp());
        QTRY_VERIFY(view->isSharp());
        QTest::keyClick(view, Qt::Key_End);
        QTRY_VERIFY(view->isSharp());
    }

    void aDocumentWithAPageOfAnySizeIsShownInBoundedMemory()
    {
        QByteArray bytes = sample::pdf(1);
        const int box = int(bytes.indexOf("/MediaBox"));
        QVERIFY(box > 0);
        const int end = int(bytes.indexOf(']', box));
        const QByteArray tall = "/MediaBox [0 0 1 9e6";
        bytes.replace(box, end - box, tall + QByteArray(end - box - tall.size(), ' '));
        const QString path = m_folder.filePath(QStringLiteral("tall.pdf"));
        QVERIFY(sample::write(path, bytes));
        show({path});
        auto *view = qobject_cast<PdfView *>(shown());
        QVERIFY(view);
        QTRY_VERIFY_WITH_TIMEOUT(view->isSharp(), 20000);
    }

    void soundEndsWithThePreview()
    {
        QByteArray wav("RIFF\xc4\x38\1\0WAVEfmt \x10\0\0\0\1\0\1\0\x40\x1f\0\0\x40\x1f\0\0"
                       "\1\0\x08\0data\xa0\x38\1\0",
                       44);
        const QString path = m_folder.filePath(QStringLiteral("ten seconds.wav"));
        QVERIFY(sample::write(path, wav + QByteArray(80000, '\x80')));
        show({path});
        auto *play = shown()->findChild<QAbstractButton *>();
        QVERIFY(play);
        QTRY_VERIFY(shown()->findChild<QSlider *>()->maximum() > 0);
        play->click();
        QTRY_COMPARE(play->accessibleName(), QStringLiteral("Pause"));
        m_window->setRootViewController(nullptr);
        QTRY_COMPARE(play->accessibleName(), QStringLiteral("Play"));
    }

    void anotherItemTakesThePlaceOfTheFirst()
    {
        const QString first = m_folder.filePath(QStringLiteral("first.txt"));
        const QString second = m_folder.filePath(QStringLiteral("second.txt"));
        QVERIFY(sample::write(first, "one") && sample::write(second, "two"));
        QSignalSpy ready(m_controller.get(), &QLPreviewController::previewReady);
        for (const QString &path : {first, second})
            m_source->items.append(std::make_shared<Item>(path));
        m_controller->setDataSource(m_source);
        m_controller->setCurrentPreviewItemIndex(1); // before the first has been read
        m_controller->setCurrentPreviewItemIndex(2);
        QTRY_COMPARE(ready.count(), 1);
        QCOMPARE(qobject_cast<QPlainTextEdit *>(shown())->toPlainText(), QStringLiteral("two"));
        m_source->items.clear();
        m_controller->reloadData();
        QCOMPARE(shownClass(), QStringLiteral("FileInfoView"));
    }

    void textIsReadInItsEncoding_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        const QString latin = QStringLiteral("naïve café, 5 €");
        QTest::newRow("UTF-8") << latin.toUtf8() << latin;
        QTest::newRow("Windows-1252") << QByteArray("na\xefve caf\xe9, 5 \x80") << latin;
        QTest::newRow("UTF-16 with a mark") << QByteArray("\xff\xfe"
                                                          "a\0\xe4\0",
                                                          6)
                                            << QStringLiteral("aä");
        QTest::newRow("UTF-16 without")
            << QByteArray("\0a\0b\0c\0d\0e", 10) << QStringLiteral("abcde");
        QTest::newRow("a character cut at the end")
            << latin.toUtf8().chopped(1) << latin.chopped(1);
        QTest::newRow("a zero in the middle")
            << QByteArray("a\0b", 3) << QStringLiteral("a\uFFFDb");
        QTest::newRow("a line too long to lay out")
            << QByteArray(5000, 'x') << QString(4096, u'x') + u'\n' + QString(904, u'x');
    }
    void textIsReadInItsEncoding()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QCOMPARE(decodeText(bytes), text);
    }

    void vectorImagesReachNothingOutside()
    {
        const auto kept = harmlessSvg(svg("<image xlink:href='/etc/passwd'/><script>x</script>"
                                          "<image xlink:href='data:image/png;base64," +
                                          sample::image({1, 1}, "png").toBase64() +
                                          "'/>"
                                          "<text>a &lt; b</text>"));
        QVERIFY(kept && !kept->contains("passwd") && !kept->contains("script"));
        const auto used = harmlessSvg(svg("<use href='/etc/passwd#a'/><use href='#b'/>"
                                          "<a xlink:href='http://a/passwd'/>"));
        QVERIFY(used && !used->contains("passwd") && used->contains("\"#b\""));
        QVERIFY(kept->contains("data:image/png") && kept->contains("a &lt; b"));
        QByteArray many = "<g id='e0'>" + QByteArray("<path/>").repeated(10) + "</g>";
        for (int level = 1; level < 10; ++level) {
            const QByteArray use = "<use xlink:href='#e" + QByteArray::number(level - 1) + "'/>";
            many += "<g id='e" + QByteArray::number(level) + "'>" + use.repeated(10) + "</g>";
        }
        QVERIFY(!harmlessSvg(svg(many)));
        QVERIFY(!harmlessSvg("<!DOCTYPE svg [<!ENTITY a 'aaaa'>]><svg>&a;</svg><"));
        QVERIFY(!harmlessSvg(QByteArray("<svg>").repeated(2000)));
    }

private:
    void show(const QStringList &paths)
    {
        QSignalSpy ready(m_controller.get(), &QLPreviewController::previewReady);
        m_source->items.clear();
        for (const QString &path : paths)
            m_source->items.append(std::make_shared<Item>(path));
        m_controller->setDataSource(m_source);
        QVERIFY(ready.wait(20000));
    }
    QWidget *shown() const
    {
        for (QObject *child : m_controller->view()->children()) {
            auto *widget = qobject_cast<QWidget *>(child);
            if (widget && widget->isVisible())
                return widget;
        }
        return nullptr;
    }

    QString shownClass() const
    {
        return QString::fromLatin1(shown()->metaObject()->className()).section(u':', -1);
    }

    QTemporaryDir m_folder;
    std::unique_ptr<UIWindow> m_window;
    std::shared_ptr<Source> m_source;
    std::shared_ptr<QLPreviewController> m_controller;
};

QTEST_MAIN(PreviewTest)
#include "tst_preview.moc"
