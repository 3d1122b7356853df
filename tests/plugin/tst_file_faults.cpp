#include "platform/foundation/file_manager.h"
#include "platform/photos/saved_photos_album.h"
#include "plugin/zelkam_mobile_contents_plugin.h"
#include "support/file_faults.h"
#include "support/http_test_server.h"
#include "support/recording_call.h"
#include "support/sample_files.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using namespace zelkam;
using namespace Qt::StringLiterals;

namespace {

const QByteArray older = "older";

/// What a process does in the folder "root": container, pictures and the person's documents.
class Work
{
public:
    explicit Work(QString folder) : root(std::move(folder))
    {
        plugin.setCurrentCallBack(nullptr);
        QDir().mkpath(root + u"/container/Download"_s);
        QDir().mkpath(root + u"/pictures"_s);
        QDir().mkpath(root + u"/documents"_s);
        picture = sample::image({40, 40}, "png");
        sample::write(root + u"/documents/f"_s, picture);
        server.on("/f", HttpTestServer::answer(picture));
        begin();
    }

    /// As the start of a process does.
    void begin()
    {
        QVERIFY(!setTemporaryDirectory(root + u"/container"_s));
        setPicturesDirectory(root + u"/pictures"_s);
    }

    QString target(const QString &scenario) const
    {
        return root + (scenario == u"pick" ? u"/container/f"_s : u"/container/Download/f"_s);
    }

    /// From a known state.
    void prepare(const QString &scenario)
    {
        QFile::remove(target(scenario));
        if (scenario != u"fresh")
            sample::write(target(scenario), older);
        for (const QString &name : pictures())
            QFile::remove(root + u"/pictures/"_s + name);
    }

    std::shared_ptr<RecordingCall> run(const QString &scenario)
    {
        const auto call =
            std::make_shared<RecordingCall>(QVariantMap{{u"url"_s, server.url(u"/f"_s)},
                                                        {u"open"_s, false},
                                                        {u"saveAlbum"_s, scenario == u"album"}});
        if (scenario == u"pick") {
            plugin.setCurrentCallBack(call);
            plugin.documentPicker(nullptr, {URL::fromFilePath(root + u"/documents/f"_s)});
        } else {
            plugin.fileDownload(call);
            (void)QTest::qWaitFor([&] { return !call->replies().isEmpty(); }, 10000);
            waitForAlbumWrites(std::chrono::seconds(10));
        }
        return call;
    }

    QStringList pictures() const
    {
        return QDir(root + u"/pictures"_s).entryList(QDir::Files | QDir::Hidden);
    }

    /// All that lies about and belongs to nobody.
    QStringList leftovers() const
    {
        QStringList names =
            QDir(root + u"/container"_s).entryList(QDir::Files | QDir::Hidden) +
            QDir(root + u"/container/Download"_s).entryList(QDir::Files | QDir::Hidden);
        names.removeAll(u"f"_s);
        return names + pictures().filter(u".part"_s);
    }

    HttpTestServer server;
    QByteArray picture;
    QString root;
    ZelkamMobileContentsPlugin plugin;
};

const QString success = u"success"_s;

} // namespace

/// Every call that a download, a pick and an album make on files fails once.
class TestFileFaults : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> root;
    std::unique_ptr<Work> work;
    int runs = 0;

    void checkWhatLies(const QString &scenario, const char *when)
    {
        const QByteArray content = sample::read(work->target(scenario));
        QVERIFY2(content == "(no file)" || content == older || content == work->picture, when);
        for (const QString &name : work->pictures().filter(u"IMG_"_s))
            QVERIFY2(!QImage(work->root + u"/pictures/"_s + name).isNull(), when);
    }

private slots:
    void init()
    {
        root = std::make_unique<QTemporaryDir>();
        work = std::make_unique<Work>(root->path());
    }
    void cleanupTestCase() { qInfo("%d runs", runs); }

    void eachCallFailsOnce_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<int>("fault");
        const std::pair<const char *, int> faults[] = {{"ENOSPC", ENOSPC},
                                                       {"EDQUOT", EDQUOT},
                                                       {"EIO", EIO},
                                                       {"EINTR", EINTR},
                                                       {"EACCES", EACCES},
                                                       {"half", file_faults::half},
                                                       {"the end", file_faults::kill}};
        for (const char *scenario : {"fresh", "replacing", "pick", "album"}) {
            for (const auto &[name, fault] : faults)
                QTest::newRow((QByteArray(scenario) + ", " + name).constData())
                    << QString::fromLatin1(scenario) << fault;
        }
    }
    void eachCallFailsOnce()
    {
        QFETCH(QString, scenario);
        QFETCH(int, fault);
        const bool ends = fault == file_faults::kill;
        // A process for each that ends: by default only for some.
        const int step = !ends || qEnvironmentVariableIsSet("ZELKAM_EVERY_FAULT") ? 1 : 5;
        const auto callsOf = [&](bool flushes) {
            setFlushesFiles(flushes);
            work->prepare(scenario);
            file_faults::arm(work->root.toUtf8(), 0, 0);
            work->run(scenario);
            return file_faults::disarm();
        };
        const int withoutFlush = callsOf(false);
        int all = callsOf(true);
        QCOMPARE(withoutFlush < all, scenario != u"pick");
        QList<std::shared_ptr<RecordingCall>> calls;
        // Until there are fewer calls than that, and all goes well.
        for (int number = 1; number <= all; number += step) {
            ++runs;
            const std::string text = std::to_string(number);
            const char *const when = text.c_str();
            work->prepare(scenario);
            if (ends) {
                QProcess process;
                process.start(QCoreApplication::applicationFilePath(),
                              {u"--end-at"_s, QString::number(number), scenario, work->root});
                QVERIFY(process.waitForFinished());
                QCOMPARE(process.exitStatus(), QProcess::CrashExit);
            } else {
                file_faults::arm(work->root.toUtf8(), number, fault);
                calls.append(work->run(scenario));
                all = std::max(all, file_faults::disarm() + 1);
                const QStringList replies = calls.last()->replies();
                QVERIFY2(!replies.isEmpty(), when);
                if (replies.first().startsWith(success))
                    QVERIFY2(sample::read(work->target(scenario)) == work->picture, when);
            }
            checkWhatLies(scenario, when);
            // A part that could not be removed goes at the next start.
            work->begin();
            if (ends && scenario == u"album")
                work->run(scenario); // the album looks after its own folder when it is used
            QTRY_VERIFY2(work->leftovers().isEmpty(), when);
        }
        QVERIFY(ends || calls.size() > 10);
        const auto saysFull = [](const std::shared_ptr<RecordingCall> &call) {
            return call->replies().value(0).contains(u"not enough space");
        };
        QCOMPARE(std::any_of(calls.cbegin(), calls.cend(), saysFull),
                 (fault == ENOSPC || fault == EDQUOT) && scenario != u"pick");
        for (qsizetype i = 0; i < calls.size(); ++i) {
            const QStringList replies = calls.at(i)->replies();
            const QStringList twice{u"error INVALID_PARAM"_s, u"error INVALID_PARAM"_s};
            QVERIFY2(replies.size() == 1 || (scenario == u"album" && replies == twice),
                     qPrintable(QString::number(i) + replies.join(u',')));
        }
        work->prepare(scenario);
        QVERIFY(work->run(scenario)->replies().value(0).startsWith(success));
        QCOMPARE(sample::read(work->target(scenario)), work->picture);
    }
};

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == u"--end-at") {
        Work work(arguments.at(4));
        file_faults::arm(work.root.toUtf8(), arguments.at(2).toInt(), file_faults::kill);
        work.run(arguments.at(3));
        return 0; // there were fewer calls
    }
    TestFileFaults test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_file_faults.moc"
