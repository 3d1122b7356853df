#include "app/command_line.h"

#include "support/data_table.h"

using namespace zelkam;
using namespace zelkam::test;
using namespace Qt::StringLiterals;

class TestCommandLine : public QObject
{
    Q_OBJECT

    static CommandLine parsed(const QString &arguments)
    {
        return parseCommandLine((u"zelkam-mobile "_s + arguments).split(u' '));
    }

private slots:
    void refuses_data() { addRows({"app/command_line.json"}); }
    void refuses()
    {
        const Row row;
        const QString part = row.text("part");
        const CommandLine result = parsed(row.text("arguments"));
        const auto *error = std::get_if<UsageError>(&result);
        QVERIFY(error);
        QVERIFY2(error->message.contains(part), qPrintable(error->message));
        QVERIFY(!error->message.contains(u'\n'));
    }

    void takesEverything()
    {
        const CommandLine result =
            parsed(u"--device=tablet --size 800x600 --allow-origin http://a.example"
                   " --allow-origin=https://B.example:443/"
                   " --real-server-url https://c.example/base/ --language pt-BR"
                   " --system-version 13.7 --no-url-transformer --max-download=5"
                   " --allow-unsafe-redirects --answer-picker /proc/version,/proc/../proc/uptime"
                   " --answer-picker=cancel https://c.example/start?a=b"_s);
        const auto *options = std::get_if<HostOptions>(&result);
        QVERIFY(options);
        QCOMPARE(options->idiom, UIUserInterfaceIdiom::pad);
        QCOMPARE(options->size, QSize(800, 600));
        QCOMPARE(options->allowedOrigins.size(), 2);
        QCOMPARE(options->allowedOrigins.at(1).toString(), u"https://b.example"_s);
        QCOMPARE(options->realServerUrl, u"https://c.example/base/"_s);
        QCOMPARE(options->language->territory(), QLocale::Brazil);
        QCOMPARE(options->systemVersion, QVersionNumber(13, 7));
        QVERIFY(!options->urlTransformer);
        QCOMPARE(options->maximumDownload, 5 << 20);
        QVERIFY(options->allowUnsafeRedirects);
        QCOMPARE(options->pickerAnswers,
                 (QList<PickerAnswer>{QStringList{u"/proc/version"_s, u"/proc/uptime"_s},
                                      std::nullopt}));
        QCOMPARE(options->page, QUrl(u"https://c.example/start?a=b"_s));
    }
};

QTEST_GUILESS_MAIN(TestCommandLine)
#include "tst_command_line.moc"
