#include "platform/foundation/bundle.h"

#include <QTest>
#include <QTranslator>

using namespace zelkam;
using namespace Qt::StringLiterals;

class TestTranslations : public QObject
{
    Q_OBJECT

private slots:
    void numbersGoWithTheLanguageThatIsShown_data()
    {
        QTest::addColumn<QString>("asked");
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("cancel");
        QTest::newRow("a language with a translation") << u"de"_s << u"1.234,5"_s << u"Abbrechen"_s;
        QTest::newRow("one with the habits of a territory")
            << u"de-CH"_s << u"1’234.5"_s << u"Abbrechen"_s;
        QTest::newRow("English of a territory") << u"en-ZA"_s << u"1\u00a0234,5"_s << u"Cancel"_s;
        QTest::newRow("a language without one") << u"pt-BR"_s << u"1,234.5"_s << u"Cancel"_s;
        QTest::newRow("one with digits of its own") << u"ar-EG"_s << u"1,234.5"_s << u"Cancel"_s;
    }

    void numbersGoWithTheLanguageThatIsShown()
    {
        QFETCH(QString, asked);
        installTranslations(QLocale(asked));
        QTEST(QLocale().toString(1234.5, 'f', 1), "number");
        QTEST(QCoreApplication::translate("zelkam::ShareSheet", "Cancel"), "cancel");
        QCOMPARE(QLocale().textDirection(), Qt::LeftToRight);
        const auto installed = QCoreApplication::instance()->findChildren<QTranslator *>();
        qDeleteAll(installed);
    }
};

QTEST_GUILESS_MAIN(TestTranslations)
#include "tst_translations.moc"
