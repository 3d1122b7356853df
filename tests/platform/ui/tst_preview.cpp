#include "platform/images/decoder.h"
#include "platform/ui/image_view.h"
#include "platform/ui/pdf_view.h"
#include "platform/ui/preview_file.h"
#include "platform/ui/ql_preview_controller.h"
#include "support/data_table.h"
#include "support/sample_files.h"
#include "support/screen_test.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QWheelEvent>
#include <sys/stat.h>

using namespace zelkam;
using namespace Qt::StringLiterals;

namespace {

struct Item : QLPreviewItem
{
    explicit Item(const QString &path) : url(URL::fromFilePath(path)) {}
    std::optional<URL> previewItemURL() const override { return url; }
    std::optional<QString> previewItemTitle() const override { return u"<b>t</b>"_s; }
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

} // namespace

class PreviewTest : public ScreenTest
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(m_folder.isValid());
        openWindow();
        m_source = std::make_shared<Source>();
        m_controller = std::make_shared<QLPreviewController>();
        window->setRootViewController(m_controller);
    }
    void cleanup()
    {
        m_controller.reset();
        closeWindow();
    }

    void aFileIsShownByWhatItIs_data() { test::addRows({"ui/previews.json"}); }
    void aFileIsShownByWhatItIs()
    {
        const test::Row row;
        const QMap<QString, QByteArray> samples{
            {u"png"_s, sample::image({300, 200}, "png")},
            {u"jpeg"_s, sample::image({30, 20}, "jpeg")},
            {u"bomb"_s, sample::pngHeader(30000, 30000)},
            {u"pdf"_s, sample::pdf(2)},
            {u"comment"_s, "<!--" + QByteArray(5000, 'x') + "-->"}};
        const QString path = QDir(m_folder.path()).filePath(row.text("file"));
        if (row["sample"].isString() || row["content"].isString())
            QVERIFY(sample::write(
                path, samples.value(row.text("sample")).left(row["upTo"].toInt(10'000)) +
                          row.bytes("content")));
        else if (row.text("file") == u"pipe.png")
            QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        preview(path);
        QCOMPARE(QString::fromLatin1(shown()->metaObject()->className()).section(u':', -1),
                 row.text("view"));
        QVERIFY2(shown()->accessibleDescription().contains(row.text("problem")),
                 qPrintable(shown()->accessibleDescription()));
        if (auto *pages = qobject_cast<PdfView *>(shown()))
            QTRY_VERIFY_WITH_TIMEOUT(pages->isSharp(), 20000);
    }

    void anImageIsZoomedAndMovedWithinItsBounds()
    {
        const QString path = m_folder.filePath(u"wide.jpg"_s);
        QVERIFY(sample::write(path, sample::image({1200, 400}, "jpeg")));
        preview(path);
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
        const QString path = m_folder.filePath(u"pages.pdf"_s);
        QVERIFY(sample::write(path, sample::pdf(3)));
        preview(path);
        auto *view = qobject_cast<PdfView *>(shown());
        QTRY_VERIFY(view->isSharp());
        QCOMPARE(view->grab().toImage().pixelColor(195, 200), QColor(Qt::blue));
        QTest::keyClick(view, Qt::Key_Plus);
        QVERIFY(!view->isSharp());
        QTRY_VERIFY(view->isSharp());
        QTest::keyClick(view, Qt::Key_End);
        QTRY_VERIFY(view->isSharp());
        window->resize(844, 390); // turned, it is still at the end
        const QScrollBar *bar = view->verticalScrollBar();
        QTRY_COMPARE(bar->value(), bar->maximum());
    }

    void soundEndsWithThePreview()
    {
        QByteArray wav("RIFF\x24\x48\xe8\1WAVEfmt \x10\0\0\0\1\0\1\0\x40\x1f\0\0\x40\x1f\0\0"
                       "\1\0\x08\0data\0\x48\xe8\1",
                       44);
        const QString path = m_folder.filePath(u"an hour.wav"_s);
        QVERIFY(sample::write(path, wav) && QFile::resize(path, wav.size() + 32'000'000));
        preview(path);
        auto *play = shown()->findChild<QAbstractButton *>();
        QVERIFY(play);
        QTRY_COMPARE(shown()->findChild<QLabel *>({}, Qt::FindDirectChildrenOnly)->text(),
                     u"0:00 / 1:06:40"_s);
        play->click();
        QTRY_COMPARE(play->accessibleName(), u"Pause"_s);
        window->setRootViewController(nullptr);
        QTRY_COMPARE(play->accessibleName(), u"Play"_s);
    }

    void anotherItemTakesThePlaceOfTheFirst()
    {
        QSignalSpy ready(m_controller.get(), &QLPreviewController::previewReady);
        for (const char *text : {"one", "two"}) {
            const QString path = m_folder.filePath(QLatin1String(text) + u".txt"_s);
            QVERIFY(sample::write(path, text));
            m_source->items.append(std::make_shared<Item>(path));
        }
        m_controller->setDataSource(m_source);
        m_controller->setCurrentPreviewItemIndex(1); // before the first has been read
        m_controller->setCurrentPreviewItemIndex(2);
        QTRY_COMPARE(ready.count(), 1);
        QCOMPARE(qobject_cast<QPlainTextEdit *>(shown())->toPlainText(), u"two"_s);
        m_source->items.clear();
        m_controller->reloadData();
        QVERIFY(shown()->inherits("zelkam::FileInfoView"));
    }

    void textIsReadInItsEncoding_data() { test::addRows({"ui/previews.json"}); }
    void textIsReadInItsEncoding()
    {
        const test::Row row;
        DecodeWish wish;
        wish.task = DecodeWish::Task::text;
        const QByteArray text = decode(wish, row.bytes("bytes")).bytes;
        QCOMPARE(QString(reinterpret_cast<const QChar *>(text.constData()), text.size() / 2),
                 row.text("text"));
    }

private:
    void preview(const QString &path)
    {
        QSignalSpy ready(m_controller.get(), &QLPreviewController::previewReady);
        m_source->items = {std::make_shared<Item>(path)};
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

    QTemporaryDir m_folder;
    std::shared_ptr<Source> m_source;
    std::shared_ptr<QLPreviewController> m_controller;
};

QTEST_MAIN(PreviewTest)
#include "tst_preview.moc"
