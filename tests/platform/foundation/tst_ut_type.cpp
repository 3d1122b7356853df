#include "platform/foundation/ut_type.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>
#include <sys/stat.h>

using namespace zelkam;
using namespace Qt::StringLiterals;

class TestUTType : public QObject
{
    Q_OBJECT

private slots:
    void placesAnExtension_data()
    {
        QTest::addColumn<QString>("extension");
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QStringList>("above");
        QTest::addColumn<QStringList>("notAbove");
        const QString content = u"public.content"_s;
        const QString text = u"public.text"_s;
        const QString image = u"public.image"_s;
        const QString zip = u"com.pkware.zip-archive"_s;
        QTest::newRow("a document")
            << u"pdf"_s << u"com.adobe.pdf"_s
            << QStringList{content, u"public.data"_s, u"public.item"_s} << QStringList{text, image};
        QTest::newRow("a photo") << u"heic"_s << u"public.heic"_s << QStringList{image, content}
                                 << QStringList{u"public.heif"_s};
        QTest::newRow("a drawing") << u"svg"_s << u"public.svg-image"_s
                                   << QStringList{image, text, u"public.xml"_s} << QStringList{};
        QTest::newRow("an archive, by its older name")
            << u"zip"_s << u"public.zip-archive"_s << QStringList{zip, u"public.data"_s}
            << QStringList{content};
        QTest::newRow("an office document, which is an archive only inside")
            << u"docx"_s
            << u"dyn.application/vnd.openxmlformats-officedocument.wordprocessingml.document"_s
            << QStringList{content} << QStringList{zip, text};
        QTest::newRow("an old office document") << u"xls"_s << u"dyn.application/vnd.ms-excel"_s
                                                << QStringList{content} << QStringList{text};
        QTest::newRow("a program's text") << u"py"_s << u"dyn.text/x-python"_s
                                          << QStringList{text, content} << QStringList{image};
        QTest::newRow("a picture nobody declared")
            << u"webp"_s << u"dyn.image/webp"_s << QStringList{image}
            << QStringList{u"public.png"_s};
        QTest::newRow("a song") << u"MP3"_s << u"public.mp3"_s << QStringList{u"public.audio"_s}
                                << QStringList{u"public.movie"_s};
        QTest::newRow("a program") << u"exe"_s << u"dyn.application/x-ms-dos-executable"_s
                                   << QStringList{u"public.data"_s} << QStringList{content};
    }
    void placesAnExtension()
    {
        QFETCH(QString, extension);
        QFETCH(QStringList, above);
        QFETCH(QStringList, notAbove);
        const auto type = UTType::fromFilenameExtension(extension);
        QVERIFY(type);
        QTEST(type->identifier(), "identifier");
        QVERIFY(UTType::fromIdentifier(type->identifier()) == type);
        QVERIFY(UTType::fromMIMEType(type->preferredMIMEType().value()) == type);
        for (const QString &identifier : above)
            QVERIFY2(type->conforms(*UTType::fromIdentifier(identifier)), qPrintable(identifier));
        for (const QString &identifier : notAbove)
            QVERIFY2(!type->conforms(*UTType::fromIdentifier(identifier)), qPrintable(identifier));
        QVERIFY(UTType::fromFilenameExtension(extension, *type) == type);
        QVERIFY(!UTType::fromFilenameExtension(extension, UTType::folder));
    }

    void hasNoTypeForWhatNobodyKnows()
    {
        for (const QString &extension : {u""_s, u"nobody-knows"_s, u"/etc/passwd"_s, u"tar.gz"_s})
            QVERIFY2(!UTType::fromFilenameExtension(extension), qPrintable(extension));
        QVERIFY(!UTType::fromIdentifier(u"public.nothing"_s));
        QVERIFY(!UTType::fromMIMEType(u"image/nothing"_s));
        QVERIFY(!UTType::image.preferredMIMEType());
    }

    void looksIntoAFileWhoseNameSaysNothing()
    {
        QTemporaryDir folder;
        const auto typeOf = [&folder](const QString &name, const QByteArray &content) {
            QFile file(folder.filePath(name));
            file.open(QIODevice::WriteOnly);
            file.write(content);
            file.close();
            const auto type = UTType::fromFile(file.fileName());
            return type ? type->identifier() : u"(none)"_s;
        };
        QCOMPARE(typeOf(u"report"_s, "%PDF-1.4\n%\xe2\xe3"), u"com.adobe.pdf"_s);
        QCOMPARE(typeOf(u"picture.nobody-knows"_s, "\x89PNG\r\n\x1a\n"), u"public.png"_s);
        QCOMPARE(typeOf(u"notes"_s, "plain words\n"), u"public.plain-text"_s);
        QCOMPARE(typeOf(u"noise"_s, QByteArray("\x01\x02\x03\x00", 4)), u"public.data"_s);
        // A name that says what it is counts, as everywhere on the device.
        QCOMPARE(typeOf(u"named.png"_s, "%PDF-1.4\n"), u"public.png"_s);

        const QString pipe = folder.filePath(u"pipe.pdf"_s);
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QVERIFY(!UTType::fromFile(pipe));
        QVERIFY(!UTType::fromFile(u"/dev/null"_s));
        QVERIFY(!UTType::fromFile(folder.path()));
    }
};

QTEST_GUILESS_MAIN(TestUTType)
#include "tst_ut_type.moc"
