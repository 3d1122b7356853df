#include "platform/foundation/file_name.h"
#include "platform/foundation/file_reader.h"
#include "platform/foundation/system_version.h"
#include "plugin/plugin_on_screen.h"
#include "support/data_table.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace zelkam;
using namespace zelkam::test;
using namespace Qt::StringLiterals;

namespace {

/// A host that makes addresses of a scheme of its own.
class Host : public CommandDelegate
{
public:
    UrlTransformer urlTransformer() const override
    {
        return [](const URL &file) -> std::optional<URL> {
            return URL::fromString(u"host:/"_s + QString::fromUtf8(file.path().toUtf8().toHex()) +
                                   u'/' + file.lastPathComponent().replace(u'%', u"%25"_s));
        };
    }
    static std::optional<QString> resolve(const URL &url)
    {
        return QString::fromUtf8(QByteArray::fromHex(url.path().section(u'/', 1, 1).toLatin1()));
    }
};

QVariantMap options(const QString &extension, bool multiselect)
{
    return {{u"extension"_s, extension}, {u"multiselect"_s, multiselect}, {u"maxcount"_s, 1}};
}

} // namespace

/// The command with real files and screens.
class TestFilePicker : public PluginOnScreen
{
    Q_OBJECT

private:
    Host host;

    std::shared_ptr<RecordingCall> call(const std::optional<QVariantMap> &arguments,
                                        bool withHost = true)
    {
        return PluginOnScreen::call("filePicker", arguments, withHost ? &host : nullptr);
    }

    std::shared_ptr<UIDocumentPickerViewController> picker()
    {
        return shown<UIDocumentPickerViewController>();
    }

    /// A file of the person's, outside of the container.
    QString document(const QString &name, const QByteArray &content = "content")
    {
        return write(u"documents/"_s + name, content);
    }

    QString copy(const QString &name) const { return NSTemporaryDirectory() + name; }

    /// The reply to a pick of files, as the delegate of a picker would have it.
    std::shared_ptr<RecordingCall> pick(const QList<URL> &urls, const QVariant &type,
                                        bool withHost = true)
    {
        auto arguments = options(u""_s, true);
        if (type.isValid())
            arguments.insert(u"type"_s, type);
        const auto recording = call(arguments, withHost);
        if (!picker())
            return recording;
        plugin->documentPicker(nullptr, urls);
        page->dismiss(false);
        (void)allGone();
        return recording;
    }
    QVariantMap picked(const QString &path, const QVariant &type, bool withHost = true)
    {
        return pick(urls({path}), type, withHost)->data().value(0).toMap();
    }
    QString addressOf(const QString &path, bool withHost = false)
    {
        return picked(path, 1, withHost).value(u"fileUri"_s).toString();
    }

    QList<URL> urls(const QStringList &paths)
    {
        QList<URL> result;
        for (const QString &path : paths)
            result.append(URL::fromFilePath(path));
        return result;
    }

private slots:
    void initTestCase() { setAddressResolver(Host::resolve); }

    void init()
    {
        begin();
        setSystemVersion(QVersionNumber(18, 0));
    }
    void cleanup() { end(); }

    void refusesArguments_data() { addRows({"plugin/file_picker.json"}); }
    void refusesArguments()
    {
        const Row row;
        const auto before = plugin->property("allowExtensionArr");
        const auto recording =
            call(row["arguments"].isObject() ? std::optional(row.map("arguments")) : std::nullopt);
        QCOMPARE(recording->replies(), QStringList(u"error INVALID_PARAM"_s));
        QCOMPARE(plugin->currentCallBack(), recording);
        QCoreApplication::processEvents();
        QVERIFY(!page->presentedViewController());
        QCOMPARE(plugin->property("allowExtensionArr"), before);
        QCOMPARE(plugin->property("fileMaxSelect").toLongLong(), 1);
    }

    void allowsTypes_data() { addRows({"plugin/file_picker.json"}); }
    void allowsTypes()
    {
        const Row row;
        const QString extensions = row.text("extensions");
        for (const bool isNew : {true, false}) {
            setSystemVersion(QVersionNumber(isNew ? 14 : 13, 0));
            const auto recording = call(options(extensions, isNew));
            const auto shown = picker();
            QVERIFY(shown);
            QCOMPARE(shown->modalPresentationStyle, UIModalPresentationStyle::overFullScreen);
            QCOMPARE(shown->allowsMultipleSelection, isNew);
            QStringList identifiers;
            for (const UTType type : shown->contentTypes())
                identifiers.append(type.identifier());
            const bool isOther = !isNew && row["typesBefore14"].isString();
            QCOMPARE(identifiers.join(u' '), row.text(isOther ? "typesBefore14" : "types"));
            QCOMPARE(plugin->property("allowExtensionArr").toStringList(),
                     extensions.split(u',', Qt::SkipEmptyParts));
            shown->cancel();
            QCOMPARE(recording->replies(), QStringList(u"success"_s));
            QVERIFY(allGone());
        }
    }

    void repliesWithAddresses()
    {
        const QString one = document(u"My Report.pdf"_s, "one");
        const QString other = document(u"sub/My Report.pdf"_s, "other");
        // Without a host's transformer, the address is the bare path, with the name encoded.
        QCOMPARE(picked(one, 1, false), (QVariantMap{{u"fileUri"_s, copy(u"My%20Report.pdf"_s)}}));
        QCOMPARE(sample::read(copy(u"My%20Report.pdf"_s)), "one");
        const auto others =
            QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        QVERIFY(!(QFile::permissions(copy(u"My%20Report.pdf"_s)) & others));

        const QString missing = root->filePath(u"gone.pdf"_s);
        const auto several = pick(urls({one, missing, other, root->path()}), 1);
        const QVariantList addresses = several->data().value(0).toList();
        QCOMPARE(addresses.size(), 2);
        QCOMPARE(addresses.at(0), addresses.at(1)); // one copy, and the later one wins
        QCOMPARE(sample::read(copy(u"My%20Report.pdf"_s)), "other");
        QCOMPARE(dataWithContentsOf(*URL::fromString(addresses.at(0).toString())), "other");
    }

    void repliesWithContent()
    {
        const QString text = document(u"x.txt"_s, "plain");
        const QString bytes = document(u"a b.nobody-knows"_s, QByteArray("\0\1", 2));
        QCOMPARE(picked(text, 0),
                 (QVariantMap{{u"data"_s, QByteArray("data:text/plain;base64,cGxhaW4=")},
                              {u"fileName"_s, u"x.txt"_s}}));
        const URL undecodable = *URL::fromString(u"file:///tmp/%FF.txt"_s);
        const auto several = pick(urls({bytes}) + QList<URL>{undecodable} + urls({text}), 0);
        const QVariantList records = several->data().value(0).toList();
        QCOMPARE(records.size(), 3);
        QCOMPARE(records.at(0).toMap(),
                 (QVariantMap{{u"data"_s, QByteArray("data:application/octet-stream;base64,AAE=")},
                              {u"fileName"_s, u"a b.nobody-knows"_s}}));
        QCOMPARE(records.at(1).toMap(), QVariantMap());
        QCOMPARE(records.at(2).toMap().value(u"fileName"_s), u"x.txt"_s);
        const auto none = pick(urls({root->filePath(u"a"_s), root->filePath(u"b"_s)}), 0);
        QCOMPARE(none->data().value(0).toList(),
                 (QVariantList{QVariantMap{{u"fileName"_s, u"a"_s}},
                               QVariantMap{{u"fileName"_s, u"b"_s}}}));
    }

    void picksANameInAnotherEncoding()
    {
        const QByteArray path = QFile::encodeName(root->path()) + "/caf\xe9.txt";
        const auto remove = qScopeGuard([&path] { std::remove(path.constData()); });
        FILE *file = std::fopen(path.constData(), "w");
        std::fputs("named", file);
        std::fclose(file);
        for (const int type : {1, 0}) {
            auto arguments = options(u"txt"_s, false);
            arguments.insert(u"type"_s, type);
            const auto recording = call(arguments);
            const auto screen = picker();
            QVERIFY(screen);
            screen->showSelection({decodeFileName(path)});
            QTRY_VERIFY(!screen->selection().isEmpty());
            screen->accept();
            QTRY_COMPARE(recording->data().size(), 1);
            QVERIFY(allGone());
            const QVariantMap reply = recording->data().first().toMap();
            const QString address = reply.value(u"fileUri"_s).toString();
            if (type == 0)
                QCOMPARE(reply.value(u"data"_s).toByteArray(), "data:text/plain;base64,bmFtZWQ=");
            else
                QCOMPARE(dataWithContentsOf(URL::fromString(address).value()), "named");
        }
    }

    void keepsTheTypeOfTheCallBefore()
    {
        const QString text = document(u"x.txt"_s);
        const QStringList url{u"fileUri"_s};
        const QStringList content{u"data"_s, u"fileName"_s};
        QCOMPARE(plugin->filePickerReturnType(), FilePickerReturnType::url);
        QCOMPARE(picked(text, u"0"_s).keys(), url); // the value at the start
        QCOMPARE(picked(text, 0).keys(), content);
        QCOMPARE(plugin->filePickerReturnType(), FilePickerReturnType::base64);
        QCOMPARE(picked(text, {}).keys(), content);
        QCOMPARE(picked(text, true).keys(), content);
        QCOMPARE(picked(text, -7).keys(), url);
        QCOMPARE(picked(text, {}).keys(), url);
    }

    void copies_data() { addRows({"plugin/file_picker.json"}); }
    void copies()
    {
        const Row row;
        const QString name = row.text("before") + row.text("begins").repeated(row.number("times")) +
                             row.text("file");
        const QString path = document(name, "named");
        if (row["directory"].isString())
            QVERIFY(!setTemporaryDirectory(root->filePath(row.text("directory"))));
        setSystemVersion(QVersionNumber(row["system"].toInt(18), 0));
        for (const bool withHost : {true, false}) {
            const QString address = addressOf(path, withHost);
            if (withHost)
                QCOMPARE(dataWithContentsOf(URL::fromString(address).value()), "named");
            else
                QCOMPARE(sample::read(address), "named");
            if (!withHost && name == u"a b.txt")
                QCOMPARE(address, copy(u"a%20b.txt"_s));
            const QVariantMap record = picked(path, 0, withHost);
            QCOMPARE(record.value(u"fileName"_s), name);
            QCOMPARE(record.value(u"data"_s), QByteArray("data:text/plain;base64,bmFtZWQ="));
        }
    }

    void keepsLongNamesApart()
    {
        const QString name = QString(251, u'%');
        const QString one = document(name, "one");
        const QString other = document(name.chopped(1) + u'x');
        QVERIFY(addressOf(one) != addressOf(other));
        QCOMPARE(sample::read(addressOf(one)), "one");
        // The name that a page may show is there as long as it fits.
        const QString fits(85, u'가');
        QVERIFY(addressOf(document(fits)).endsWith(u'/' + fits));
    }

    void failsToCopy_data() { addRows({"plugin/file_picker.json"}); }
    void failsToCopy()
    {
        const Row row;
        document(u"Download"_s);
        const QString folder = root->filePath(u"documents"_s);
        ::mkfifo(QFile::encodeName(folder + u"/pipe"_s).constData(), 0600);
        QFile::link(folder + u"/nothing"_s, folder + u"/dangling"_s);
        const QString path = row.text("path").replace(u"{in}"_s, folder);
        const QStringList notFound{u"error FILE_NOT_FOUND"_s};
        for (const int type : {0, 1})
            QCOMPARE(pick(urls({path}), type)->replies(), notFound);
        QCOMPARE(pick(urls({path, path}), 1)->replies(), notFound);
        QVERIFY(QDir(NSTemporaryDirectory())
                    .isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    }

    void picksAFileOfTheContainerOntoItself()
    {
        QVERIFY(sample::write(copy(u"a.txt"_s), "inside"));
        QCOMPARE(pick(urls({copy(u"a.txt"_s)}), 1)->replies(), QStringList(u"success with data"_s));
        QCOMPARE(sample::read(copy(u"a.txt"_s)), "inside");
    }

    void endsTheProgramOnWhatCannotBe_data()
    {
        QTest::addColumn<bool>("withDirectory");
        QTest::newRow("a pick of nothing") << true;
        QTest::newRow("no temporary directory") << false;
    }
    void endsTheProgramOnWhatCannotBe()
    {
        QFETCH(bool, withDirectory);
        const auto picked = withDirectory ? QList<URL>() : urls({document(u"a"_s)});
        if (!withDirectory)
            QDir(NSTemporaryDirectory()).removeRecursively();
        const pid_t child = ::fork();
        QVERIFY(child >= 0);
        if (child == 0) {
            const rlimit none{0, 0};
            ::setrlimit(RLIMIT_CORE, &none);
            ::signal(SIGABRT, SIG_DFL);
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
            plugin->documentPicker(nullptr, picked);
            ::_exit(0);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        QVERIFY(WIFSIGNALED(status));
        QCOMPARE(WTERMSIG(status), SIGABRT);
    }
};

QTEST_MAIN(TestFilePicker)
#include "tst_file_picker.moc"
