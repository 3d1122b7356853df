#include "platform/foundation/ut_type.h"
#include "support/data_table.h"

#include <QTemporaryDir>
#include <sys/stat.h>

using namespace zelkam;
using namespace Qt::StringLiterals;

class TestUTType : public QObject
{
    Q_OBJECT

private slots:
    void placesAnExtension_data() { test::addRows({"ut_type.json"}); }
    void placesAnExtension()
    {
        const test::Row row;
        const QString extension = row.text("extension");
        const auto type = UTType::fromFilenameExtension(extension);
        QVERIFY(type);
        QCOMPARE(type->identifier(), row.text("identifier"));
        QVERIFY(UTType::fromIdentifier(type->identifier()) == type);
        QVERIFY(UTType::fromMIMEType(type->preferredMIMEType().value()) == type);
        for (const QString &identifier : row.texts("above"))
            QVERIFY2(type->conforms(*UTType::fromIdentifier(identifier)), qPrintable(identifier));
        for (const QString &identifier : row.texts("notAbove"))
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

    void looksIntoAFileWhoseNameSaysNothing_data() { test::addRows({"ut_type.json"}); }
    void looksIntoAFileWhoseNameSaysNothing()
    {
        const test::Row row;
        QTemporaryDir folder;
        QFile file(folder.filePath(row.text("file")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(row.bytes("content"));
        file.close();
        const auto type = UTType::fromFile(file.fileName());
        QVERIFY(type);
        QCOMPARE(type->identifier(), row.text("identifier"));
    }

    void looksIntoFilesOnly()
    {
        QTemporaryDir folder;
        const QString pipe = folder.filePath(u"pipe.pdf"_s);
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QVERIFY(!UTType::fromFile(pipe));
        QVERIFY(!UTType::fromFile(u"/dev/null"_s));
        QVERIFY(!UTType::fromFile(folder.path()));
    }
};

QTEST_GUILESS_MAIN(TestUTType)
#include "tst_ut_type.moc"
