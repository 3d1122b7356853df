#include "host/argument_values.h"
#include "plugin/zelkam_mobile_contents_plugin.h"
#include "support/recording_call.h"

#include <QtTest>
#include <limits>

using namespace zelkam;
using namespace Qt::StringLiterals;

/// What a call comes to in a program that has no widgets.
class TestWithoutScreens : public QObject
{
    Q_OBJECT

private slots:
    void convertsNothing_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("readableAs");
        const auto row = [](const char *name, const QVariant &value, const char *readableAs) {
            QTest::newRow(name) << value << QString::fromLatin1(readableAs);
        };
        row("a boolean", true, "bool");
        row("a text that says true", u"true"_s, "string");
        row("a whole number", qlonglong(1), "integer number");
        row("a whole number of Qt's", 1, "integer number");
        row("a number without a fraction", 1e15, "integer number");
        row("the least 64-bit number", -0x1p63, "integer number");
        row("one beyond the 64-bit range", 0x1p63, "number");
        row("a fraction", 1.5, "number");
        row("not a number", qQNaN(), "number");
        row("infinity", qInf(), "number");
        row("a dictionary", QVariantMap{{u"a"_s, 1}}, "dictionary");
        row("a dictionary of texts", QVariantMap{{u"a"_s, u"1"_s}}, "dictionary texts");
        row("an empty dictionary", QVariantMap(), "dictionary texts");
        row("a list", QVariantList{1}, "");
        row("null", QVariant::fromValue(nullptr), "");
        row("nothing", QVariant(), "");
    }
    void convertsNothing()
    {
        QFETCH(QVariant, value);
        const QString key = u"k"_s;
        const QVariantMap arguments{{key, value}};
        QStringList readable;
        const auto add = [&](const char *kind, bool isReadable) {
            if (isReadable)
                readable.append(QString::fromLatin1(kind));
        };
        add("bool", boolArgument(arguments, key).has_value());
        add("string", stringArgument(arguments, key).has_value());
        add("integer", integerArgument(arguments, key).has_value());
        add("number", numberArgument(arguments, key).has_value());
        add("dictionary", dictionaryArgument(arguments, key).has_value());
        add("texts", textDictionaryArgument(arguments, key).has_value());
        QTEST(readable.join(u' '), "readableAs");
        QVERIFY(!boolArgument(arguments, u"K"_s) && !stringArgument({}, key));
    }

    void saysThatThereIsNoPicker()
    {
        const auto plugin = makePlugin<ZelkamMobileContentsPlugin>();
        const auto call = std::make_shared<RecordingCall>(
            QVariantMap{{u"extension"_s, u""_s}, {u"multiselect"_s, false}, {u"maxcount"_s, 1}});
        QMetaObject::invokeMethod(plugin.get(), "filePicker",
                                  Q_ARG(zelkam::CallBackManagerPtr, call));
        QCOMPARE(call->replies(), QStringList());
        QTRY_COMPARE(call->replies(), QStringList(u"error OBJECT_CREATION_FAILED: fileBrowser "
                                                  "init failed"_s));
    }
};

QTEST_GUILESS_MAIN(TestWithoutScreens)
#include "tst_without_screens.moc"
