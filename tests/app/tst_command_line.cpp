#include "app/command_line.h"

#include <QTest>

using namespace zelkam;
using namespace Qt::StringLiterals;

class TestCommandLine : public QObject
{
    Q_OBJECT

private slots:
    void refuses_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("part");
        const auto row = [](const char *name, const QStringList &arguments, const QString &part) {
            QTest::newRow(name) << arguments << part;
        };
        row("an option that there is not", {u"--sise"_s, u"1x1"_s}, u"sise"_s);
        row("an option without its value", {u"--size"_s}, u"size"_s);
        row("an empty value", {u"--device="_s}, u"--device needs a value"_s);
        row("a device of another kind", {u"--device"_s, u"watch"_s}, u"watch"_s);
        row("a size without a height", {u"--size"_s, u"390"_s}, u"390"_s);
        row("a size that nothing fits into", {u"--size"_s, u"199x844"_s}, u"199x844"_s);
        row("a size that cannot be painted", {u"--size"_s, u"390x8193"_s}, u"390x8193"_s);
        row("a size of nothing", {u"--size"_s, u"0x0"_s}, u"0x0"_s);
        row("a colour that is no scheme", {u"--color-scheme"_s, u"blue"_s}, u"blue"_s);
        row("a version in words", {u"--system-version"_s, u"newest"_s}, u"newest"_s);
        row("a language nobody speaks", {u"--language"_s, u"xx-nowhere"_s}, u"xx-nowhere"_s);
        row("a temporary folder with a percent sign", {u"--temp-dir"_s, u"/tmp/50%25"_s}, u"%"_s);
        row("an origin with a path", {u"--allow-origin"_s, u"https://a.example/app"_s}, u"/app"_s);
        row("any origin at all", {u"--allow-origin"_s, u"*"_s}, u"*"_s);
        row("any origin below a host", {u"--allow-origin"_s, u"https://*.example"_s}, u"*"_s);
        row("files as an origin", {u"--allow-origin"_s, u"file:///"_s}, u"file:"_s);
        row("a server that is none", {u"--real-server-url"_s, u"ftp://a.example"_s}, u"ftp"_s);
        row("a limit of nothing", {u"--max-download"_s, u"0"_s}, u"--max-download"_s);
        row("a page that there is not", {u"/no/such/page.html"_s}, u"/no/such/page.html"_s);
        row("a page of script", {u"javascript:alert(1)"_s}, u"javascript"_s);
        row("a folder as the page", {u"/tmp"_s}, u"/tmp"_s);
        row("two pages", {u"http://a.example"_s, u"http://b.example"_s}, u"2"_s);
        row("an answer with a file that there is not",
            {u"--answer-picker"_s, u"/proc/version,/no/such/file"_s}, u"/no/such/file"_s);
        row("a folder as an answer", {u"--answer-picker"_s, u"/tmp"_s}, u"/tmp"_s);
        row("a tour of somebody else's page", {u"--tour"_s, u"http://a.example"_s}, u"tour"_s);
    }

    void refuses()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, part);
        const CommandLine result = parseCommandLine(QStringList{u"zelkam-mobile"_s} + arguments);
        const auto *error = std::get_if<UsageError>(&result);
        QVERIFY(error);
        QVERIFY2(error->message.contains(part), qPrintable(error->message));
        QVERIFY(!error->message.contains(u'\n'));
    }

    void takesEverything()
    {
        const CommandLine result = parseCommandLine({u"zelkam-mobile"_s,
                                                     u"--device=tablet"_s,
                                                     u"--size"_s,
                                                     u"800x600"_s,
                                                     u"--allow-origin"_s,
                                                     u"http://a.example"_s,
                                                     u"--allow-origin=https://B.example:443/"_s,
                                                     u"--real-server-url"_s,
                                                     u"https://c.example/base/"_s,
                                                     u"--language"_s,
                                                     u"pt-BR"_s,
                                                     u"--system-version"_s,
                                                     u"13.7"_s,
                                                     u"--no-url-transformer"_s,
                                                     u"--max-download=5"_s,
                                                     u"--allow-unsafe-redirects"_s,
                                                     u"--answer-picker"_s,
                                                     u"/proc/version,/proc/../proc/uptime"_s,
                                                     u"--answer-picker=cancel"_s,
                                                     u"https://c.example/start?a=b"_s});
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
