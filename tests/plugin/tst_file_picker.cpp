#include "platform/foundation/file_manager.h"
#include "platform/foundation/file_reader.h"
#include "platform/foundation/system_version.h"
#include "platform/ui/theme.h"
#include "platform/ui/ui_application.h"
#include "platform/ui/ui_window.h"
#include "plugin/zelkam_mobile_contents_plugin.h"
#include "support/recording_call.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace zelkam;
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

QVariantMap options(const QString &extension, bool multiselect, int type)
{
    return {{u"extension"_s, extension},
            {u"multiselect"_s, multiselect},
            {u"maxcount"_s, 1},
            {u"type"_s, type}};
}

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

} // namespace

/// The command through the plug-in's meta-object, as a host calls it, with real files and screens.
class TestFilePicker : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> root;
    std::unique_ptr<UIWindow> window;
    std::shared_ptr<UIViewController> page;
    std::shared_ptr<ZelkamMobileContentsPlugin> plugin;
    Host host;

    std::shared_ptr<RecordingCall> call(const std::optional<QVariantMap> &arguments,
                                        bool withHost = true)
    {
        auto recording = std::make_shared<RecordingCall>(arguments, withHost ? &host : nullptr);
        QMetaObject::invokeMethod(plugin.get(), "filePicker",
                                  Q_ARG(zelkam::CallBackManagerPtr, recording));
        return recording;
    }

    std::shared_ptr<UIDocumentPickerViewController> picker()
    {
        std::shared_ptr<UIDocumentPickerViewController> shown;
        const bool isThere = QTest::qWaitFor([&] {
            shown = std::dynamic_pointer_cast<UIDocumentPickerViewController>(
                page->presentedViewController());
            return shown && shown->isVisible() && !window->isInTransition();
        });
        return isThere ? shown : nullptr;
    }

    /// A file of the person's, outside of the container.
    QString write(const QString &name, const QByteArray &content = "content")
    {
        const QString path = root->filePath(u"documents/"_s + name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.write(content);
        return path;
    }

    QString copy(const QString &name) const { return NSTemporaryDirectory() + name; }

    /// The reply to a pick of files, as the delegate of a picker would have it.
    std::shared_ptr<RecordingCall> pick(const QList<URL> &urls, int type, bool withHost = true)
    {
        const auto recording = call(options(u""_s, true, type), withHost);
        if (!picker())
            return recording;
        plugin->documentPicker(nullptr, urls);
        page->dismiss(false);
        (void)QTest::qWaitFor([this] { return !page->presentedViewController(); });
        return recording;
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
        setMotionReduced(true);
        setSystemVersion(QVersionNumber(18, 0));
        root = std::make_unique<QTemporaryDir>();
        QVERIFY(!setTemporaryDirectory(root->filePath(u"container"_s)));
        window = std::make_unique<UIWindow>();
        page = std::make_shared<UIViewController>();
        window->setRootViewController(page);
        window->resize(390, 844);
        window->makeKeyAndVisible();
        plugin = makePlugin<ZelkamMobileContentsPlugin>();
        plugin->setViewController(page.get());
    }

    void refusesArguments_data()
    {
        QTest::addColumn<std::optional<QVariantMap>>("arguments");
        const auto with = [](const QString &key, const QVariant &value) {
            QVariantMap map = options(u"png"_s, true, 0);
            if (value.isValid())
                map.insert(key, value);
            else
                map.remove(key);
            return std::optional(map);
        };
        QTest::newRow("no arguments") << std::optional<QVariantMap>();
        QTest::newRow("no extension") << with(u"extension"_s, {});
        QTest::newRow("a list for the extension") << with(u"extension"_s, QVariantList{u"png"_s});
        QTest::newRow("no multiselect") << with(u"multiselect"_s, {});
        QTest::newRow("a text for a boolean") << with(u"multiselect"_s, u"true"_s);
        QTest::newRow("a number for a boolean") << with(u"multiselect"_s, 1LL);
        QTest::newRow("no maxcount") << with(u"maxcount"_s, {});
        QTest::newRow("a fraction for a count") << with(u"maxcount"_s, 1.5);
    }
    void refusesArguments()
    {
        QFETCH(std::optional<QVariantMap>, arguments);
        const auto before = plugin->property("allowExtensionArr");
        const auto recording = call(arguments);
        QCOMPARE(recording->replies(), QStringList(u"error INVALID_PARAM"_s));
        QCOMPARE(plugin->currentCallBack(), recording);
        QCoreApplication::processEvents();
        QVERIFY(!page->presentedViewController());
        QCOMPARE(plugin->property("allowExtensionArr"), before);
        QCOMPARE(plugin->property("fileMaxSelect").toLongLong(), 1);
    }

    void allowsTypes_data()
    {
        QTest::addColumn<QString>("extensions");
        QTest::addColumn<QStringList>("since14");
        QTest::addColumn<QStringList>("before14");
        const QStringList item{u"public.item"_s};
        const QStringList office{u"public.content"_s, u"public.text"_s};
        QTest::newRow("nothing named") << u""_s << item << item;
        QTest::newRow("only unknown ones") << u"exe,,"_s << item << item;
        QTest::newRow("any case") << u"PDF,Jpg"_s
                                  << QStringList{u"com.adobe.pdf"_s, u"public.jpeg"_s}
                                  << QStringList{u"com.adobe.pdf"_s, u"public.jpeg"_s};
        QTest::newRow("empty pieces, and a blank that is not trimmed")
            << u"png,, pdf"_s << QStringList{u"public.png"_s} << QStringList{u"public.png"_s};
        QTest::newRow("office documents, one after another")
            << u"doc,xls"_s << office + office << office + office;
        QTest::newRow("the other office documents")
            << u"docx,xlsx,ppt,pptx"_s << office + office + office + office
            << office + office + office + office;
        QTest::newRow("kinds that came with 14.0")
            << u"heic,heif,svg,avi"_s
            << QStringList{u"public.heic"_s, u"public.heif"_s, u"public.svg-image"_s,
                           u"public.avi"_s}
            << item;
        QTest::newRow("all others")
            << u"jpeg,gif,zip,html,xml,yaml,mp4,mp3"_s
            << QStringList{u"public.jpeg"_s,   u"com.compuserve.gif"_s, u"public.zip-archive"_s,
                           u"public.html"_s,   u"public.xml"_s,         u"public.yaml"_s,
                           u"public.mpeg-4"_s, u"public.mp3"_s}
            << QStringList{u"public.jpeg"_s,   u"com.compuserve.gif"_s, u"public.zip-archive"_s,
                           u"public.html"_s,   u"public.xml"_s,         u"public.content"_s,
                           u"public.mpeg-4"_s, u"public.mp3"_s};
    }
    void allowsTypes()
    {
        QFETCH(QString, extensions);
        for (const bool isNew : {true, false}) {
            setSystemVersion(QVersionNumber(isNew ? 14 : 13, 0));
            const auto recording = call(options(extensions, isNew, 1));
            const auto shown = picker();
            QVERIFY(shown);
            QCOMPARE(shown->modalPresentationStyle, UIModalPresentationStyle::overFullScreen);
            QCOMPARE(shown->allowsMultipleSelection, isNew);
            QStringList identifiers;
            for (const UTType type : shown->contentTypes())
                identifiers.append(type.identifier());
            QTEST(identifiers, isNew ? "since14" : "before14");
            QCOMPARE(plugin->property("allowExtensionArr").toStringList(),
                     extensions.split(u',', Qt::SkipEmptyParts));
            shown->cancel();
            QCOMPARE(recording->replies(), QStringList(u"success"_s));
            QTRY_VERIFY(!page->presentedViewController());
        }
    }

    void repliesWithAddresses()
    {
        const QString one = write(u"My Report.pdf"_s, "one");
        const QString other = write(u"sub/My Report.pdf"_s, "other");
        const auto single = pick(urls({one}), 1, false);
        // Without a host's transformer, the address is the bare path, with the name encoded.
        QCOMPARE(single->data(),
                 QVariantList{QVariant(QVariantMap{{u"fileUri"_s, copy(u"My%20Report.pdf"_s)}})});
        QCOMPARE(read(copy(u"My%20Report.pdf"_s)), "one");
        const auto others =
            QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        QVERIFY(!(QFile::permissions(copy(u"My%20Report.pdf"_s)) & others));

        const QString missing = root->filePath(u"gone.pdf"_s);
        const auto several = pick(urls({one, missing, other, root->path()}), 1);
        const QVariantList addresses = several->data().value(0).toList();
        QCOMPARE(addresses.size(), 2);
        QCOMPARE(addresses.at(0), addresses.at(1)); // one copy, and the later one wins
        QCOMPARE(read(copy(u"My%20Report.pdf"_s)), "other");
        QCOMPARE(dataWithContentsOf(*URL::fromString(addresses.at(0).toString())), "other");
    }

    void repliesWithContent()
    {
        const QString text = write(u"x.txt"_s, "plain");
        const QString bytes = write(u"a b.nobody-knows"_s, QByteArray("\0\1", 2));
        const auto single = pick(urls({text}), 0);
        QCOMPARE(single->data(), QVariantList{QVariant(QVariantMap{
                                     {u"data"_s, QByteArray("data:text/plain;base64,cGxhaW4=")},
                                     {u"fileName"_s, u"x.txt"_s}})});
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

    void keepsTheTypeOfTheCallBefore()
    {
        const QString text = write(u"x.txt"_s);
        const auto replyKeys = [&](const QVariant &type) {
            QVariantMap arguments = options(u""_s, false, 0);
            arguments.insert(u"type"_s, type);
            const auto recording = call(arguments);
            if (!picker())
                return QStringList();
            plugin->documentPicker(nullptr, urls({text}));
            page->dismiss(false);
            (void)QTest::qWaitFor([this] { return !page->presentedViewController(); });
            return recording->data().value(0).toMap().keys();
        };
        const QStringList url{u"fileUri"_s};
        const QStringList content{u"data"_s, u"fileName"_s};
        QCOMPARE(plugin->filePickerReturnType(), FilePickerReturnType::url);
        QCOMPARE(replyKeys(u"0"_s), url); // the value at the start
        QCOMPARE(replyKeys(0), content);
        QCOMPARE(plugin->filePickerReturnType(), FilePickerReturnType::base64);
        QCOMPARE(replyKeys({}), content);
        QCOMPARE(replyKeys(true), content);
        QCOMPARE(replyKeys(-7), url);
        QCOMPARE(replyKeys({}), url);
    }

    void copiesNames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("a blank") << u"a b.txt"_s;
        QTest::newRow("quotes") << u"\"it's\".txt"_s;
        QTest::newRow("signs of an address") << u"100%#?&;=+.txt"_s;
        QTest::newRow("a percent sign and digits") << u"a%41%00.txt"_s;
        QTest::newRow("emoji") << u"🙂.txt"_s;
        QTest::newRow("right-to-left marks") << u"\u202Ea\u200F.txt"_s;
        QTest::newRow("a line break") << u"a\nb.txt"_s;
        QTest::newRow("a backslash") << u"a\\b.txt"_s;
        QTest::newRow("dots") << u"...txt"_s;
        QTest::newRow("255 bytes") << QString(251, u'n') + u".txt"_s;
        QTest::newRow("41 syllables") << QString(41, u'가') + u".txt"_s;
        QTest::newRow("255 bytes of syllables") << QString(83, u'文') + u"ab.txt"_s;
        QTest::newRow("255 bytes of emoji") << u"🙂"_s.repeated(62) + u"abc.txt"_s;
        QTest::newRow("255 bytes of percent signs") << QString(251, u'%') + u".txt"_s;
        QTest::newRow("255 bytes, and no extension to keep")
            << u"%."_s + QString(249, u'n') + u".txt"_s;
    }
    void copiesNames()
    {
        QFETCH(QString, name);
        const QString path = write(name, "named");
        for (const bool withHost : {true, false}) {
            const auto asUrl = pick(urls({path}), 1, withHost);
            const QString address = asUrl->data().value(0).toMap().value(u"fileUri"_s).toString();
            QCOMPARE(dataWithContentsOf(URL::fromString(address).value()), "named");
            if (!withHost)
                QCOMPARE(read(address), "named");
            const QVariantMap record = pick(urls({path}), 0, withHost)->data().value(0).toMap();
            QCOMPARE(record.value(u"fileName"_s), name);
            QCOMPARE(record.value(u"data"_s), QByteArray("data:text/plain;base64,bmFtZWQ="));
        }
    }

    void keepsLongNamesApart()
    {
        const auto addressOf = [this](const QString &name) {
            return pick(urls({write(name, name.toUtf8())}), 1, false)
                ->data()
                .value(0)
                .toMap()
                .value(u"fileUri"_s)
                .toString();
        };
        const QString one = QString(251, u'%');
        const QString other = QString(250, u'%') + u'x';
        const QString ofOne = addressOf(one);
        QVERIFY(ofOne != addressOf(other));
        QCOMPARE(ofOne, addressOf(one));
        QCOMPARE(read(ofOne), one.toUtf8());
        // The name that a page may show is there as long as it fits.
        QVERIFY(addressOf(QString(85, u'가')).endsWith(u'/' + QString(85, u'가')));
    }

    void worksInAnyDirectory_data()
    {
        QTest::addColumn<QString>("directory");
        for (const auto &name : {u"My App"_s, u"Zoë"_s, u"100%41 %"_s, u"a#b?c"_s, u"\"[^]`|\\"_s})
            QTest::newRow(qUtf8Printable(name)) << name;
    }
    void worksInAnyDirectory()
    {
        QFETCH(QString, directory);
        QVERIFY(!setTemporaryDirectory(root->filePath(directory)));
        const QString path = write(u"a b.txt"_s, "named");
        for (const int version : {16, 18}) {
            setSystemVersion(QVersionNumber(version, 0));
            for (const bool withHost : {true, false}) {
                const auto reply = pick(urls({path}), 1, withHost)->data().value(0).toMap();
                const QString address = reply.value(u"fileUri"_s).toString();
                if (withHost)
                    QCOMPARE(dataWithContentsOf(URL::fromString(address).value()), "named");
                else
                    QCOMPARE(address, copy(u"a%20b.txt"_s));
                const auto record = pick(urls({path}), 0, withHost)->data().value(0).toMap();
                QCOMPARE(record.value(u"data"_s), QByteArray("data:text/plain;base64,bmFtZWQ="));
            }
        }
        QCOMPARE(read(copy(u"a%20b.txt"_s)), "named");
    }

    void failsToCopy_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("a file that vanished") << u"{in}/gone"_s;
        QTest::newRow("a folder") << u"{in}"_s;
        QTest::newRow("a pipe") << u"{in}/pipe"_s;
        QTest::newRow("a device") << u"/dev/zero"_s;
        QTest::newRow("a link that leads nowhere") << u"{in}/dangling"_s;
        QTest::newRow("the name of the downloads' folder") << u"{in}/Download"_s;
        QTest::newRow("a name that is no name") << u"{in}/x/.."_s;
    }
    void failsToCopy()
    {
        QFETCH(QString, path);
        write(u"Download"_s);
        const QString folder = root->filePath(u"documents"_s);
        ::mkfifo(QFile::encodeName(folder + u"/pipe"_s).constData(), 0600);
        QFile::link(folder + u"/nothing"_s, folder + u"/dangling"_s);
        path.replace(u"{in}"_s, folder);
        const QStringList notFound{u"error FILE_NOT_FOUND"_s};
        for (const int type : {0, 1})
            QCOMPARE(pick(urls({path}), type)->replies(), notFound);
        QCOMPARE(pick(urls({path, path}), 1)->replies(), notFound);
        QVERIFY(QDir(NSTemporaryDirectory())
                    .isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    }

    void leavesNoHalfCopyOnAFullDisk()
    {
        const QString path = write(u"large.bin"_s, QByteArray(1 << 20, 'x'));
        QFile before(copy(u"large.bin"_s));
        QVERIFY(before.open(QIODevice::WriteOnly) && before.write("older") == 5);
        before.close();
        const auto recording = call(options(u""_s, false, 1));
        QVERIFY(picker());
        rlimit limit = {};
        ::getrlimit(RLIMIT_FSIZE, &limit);
        const rlimit small{4096, limit.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
        plugin->documentPicker(nullptr, urls({path}));
        ::setrlimit(RLIMIT_FSIZE, &limit);
        QCOMPARE(recording->replies(), QStringList(u"error FILE_NOT_FOUND"_s));
        QCOMPARE(read(copy(u"large.bin"_s)), "older");
        QCOMPARE(QDir(NSTemporaryDirectory()).entryList(QDir::Files | QDir::Hidden),
                 QStringList(u"large.bin"_s));
    }

    void picksAFileOfTheContainerOntoItself()
    {
        QFile inside(copy(u"a.txt"_s));
        QVERIFY(inside.open(QIODevice::WriteOnly) && inside.write("inside") == 6);
        inside.close();
        QCOMPARE(pick(urls({copy(u"a.txt"_s)}), 1)->replies(), QStringList(u"success with data"_s));
        QCOMPARE(read(copy(u"a.txt"_s)), "inside");
    }

    void saysNothingWithoutAPage()
    {
        plugin->setViewController(nullptr);
        const auto recording = call(options(u""_s, false, 1));
        QTest::qWait(20);
        QCOMPARE(recording->replies(), QStringList());
        QVERIFY(!page->presentedViewController());
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
        const auto picked = withDirectory ? QList<URL>() : urls({write(u"a"_s)});
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
