#include "platform/foundation/bundle.h"
#include "support/data_table.h"

#include <QTranslator>

using namespace zelkam;

class TestTranslations : public QObject
{
    Q_OBJECT

private slots:
    void numbersGoWithTheLanguageThatIsShown_data() { test::addRows({"translations.json"}); }

    void numbersGoWithTheLanguageThatIsShown()
    {
        const test::Row row;
        installTranslations(QLocale(row.text("asked")));
        QCOMPARE(QLocale().toString(1234.5, 'f', 1), row.text("number"));
        QCOMPARE(QCoreApplication::translate("zelkam::ShareSheet", "Cancel"), row.text("cancel"));
        QCOMPARE(QLocale().textDirection(), Qt::LeftToRight);
        const auto installed = QCoreApplication::instance()->findChildren<QTranslator *>();
        qDeleteAll(installed);
    }
};

QTEST_GUILESS_MAIN(TestTranslations)
#include "tst_translations.moc"
