#include "platform/foundation/file_manager.h"
#include "platform/foundation/file_reader.h"
#include "support/data_table.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace zelkam;
using namespace Qt::StringLiterals;

namespace {

void write(const QString &path, const QByteArray &content = "content")
{
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(path));
    file.write(content);
}

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

} // namespace

/// The container is "in"; beside it lies what nobody may reach.
class TestFileManager : public QObject
{
    Q_OBJECT

private:
    FileManager &files = FileManager::defaultManager();
    std::unique_ptr<QTemporaryDir> root;
    QString outside;
    QString container;

    /// The default folder is chosen once, so another program chooses it.
    static QString chosenBelow(const QString &systemFolder)
    {
        QProcess program;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"TMPDIR"_s, systemFolder);
        program.setProcessEnvironment(environment);
        program.start(QCoreApplication::applicationFilePath(), {u"--print-container"_s});
        return program.waitForFinished() ? QString::fromUtf8(program.readAllStandardOutput())
                                         : QString();
    }

private slots:
    void init()
    {
        root = std::make_unique<QTemporaryDir>();
        outside = root->filePath(u"secret"_s);
        write(outside);
        QVERIFY(!setTemporaryDirectory(root->filePath(u"in"_s)));
        container = NSTemporaryDirectory();
        QVERIFY(container.endsWith(u"/in/"_s));
        QVERIFY(!files.createDirectory(container + u"Download"_s));
        files.addOwnFolder(container + u"Download"_s);
        write(container + u"Download/a"_s);
        QVERIFY(QFile::link(root->path(), container + u"link"_s));
        QVERIFY(QFile::link(outside, container + u"Download/secret-link"_s));
    }

    void refuses_data() { test::addRows({"file_manager.json"}); }

    void refuses()
    {
        QString path = test::Row().text("path");
        QDir().mkpath(root->filePath(u"inside"_s));
        write(root->filePath(u"inside/secret"_s));
        path.replace(u"{in}"_s, root->filePath(u"in"_s)).replace(u"{out}"_s, root->path());
        QVERIFY(files.removeItem(path));
        QVERIFY(files.moveItem(path, container + u"taken"_s));
        QVERIFY(files.moveItem(container + u"Download/a"_s, path));
        QVERIFY(files.createDirectory(path));
        QVERIFY(files.createFile(path, "new"));
        QCOMPARE(read(outside), "content");
        QCOMPARE(read(root->filePath(u"inside/secret"_s)), "content");
        QCOMPARE(read(container + u"Download/a"_s), "content");
        QVERIFY(!QFile::exists(container + u"taken"_s));
    }

    void removesALinkAndNotItsTarget()
    {
        const QString link = container + u"Download/secret-link"_s;
        QVERIFY(files.fileExists(link));
        QVERIFY(!files.removeItem(link));
        QVERIFY(!files.fileExists(link));
        QDir().mkpath(container + u"x/y/z"_s);
        write(container + u"x/y/file"_s);
        QVERIFY(QFile::link(root->path(), container + u"x/out"_s));
        QVERIFY(!files.removeItem(container + u"x"_s));
        QVERIFY(!files.fileExists(container + u"x"_s));
        QCOMPARE(read(outside), "content");
    }

    void movesAndNeverReplaces()
    {
        write(container + u"b"_s, "new");
        QCOMPARE(files.moveItem(container + u"b"_s, container + u"Download/a"_s),
                 std::errc::file_exists);
        QCOMPARE(read(container + u"Download/a"_s), "content");
        QVERIFY(!files.moveItem(container + u"b"_s, container + u"Download/b ü%"_s));
        QCOMPARE(read(container + u"Download/b ü%"_s), "new");
        QVERIFY(files.moveItem(container + u"Download/a"_s, container + u"missing/a"_s));
        QVERIFY(files.moveItem(container + u"Download/a"_s, container + u"Download/c/"_s));
        QVERIFY(files.moveItem(container + u"Download/a"_s,
                               container + u"Download/"_s + QString(300, u'n')));
        QCOMPARE(read(container + u"Download/a"_s), "content");
        // A name with a slash at its end is not that file.
        QVERIFY(!files.fileExists(container + u"Download/a/"_s));
        QVERIFY(files.fileExists(container + u"Download/"_s));
    }

    void makesAFileWholeOrNotAtAll()
    {
        const QString target = container + u"a.pdf"_s;
        QVERIFY(!files.createFile(target, "first"));
        QVERIFY(!files.createFile(target, "second"));
        QCOMPARE(read(target), "second");
        // A link gives way to the file; what it points to does not change.
        QVERIFY(!files.createFile(container + u"Download/secret-link"_s, "mine"));
        QCOMPARE(read(container + u"Download/secret-link"_s), "mine");
        QCOMPARE(read(outside), "content");

        QDir().mkpath(container + u"folder"_s);
        QVERIFY(files.createFile(container + u"folder"_s, "x"));
        QVERIFY(files.createFile(container + u"folder/"_s, "x"));
        QVERIFY(files.createFile(container + QString(256, u'n'), "x"));
        // A full disk, as far as a process can have one of its own.
        rlimit limit = {};
        ::getrlimit(RLIMIT_FSIZE, &limit);
        const rlimit small{1000, limit.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
        const bool failed = bool(files.createFile(target, QByteArray(5000, 'x')));
        ::setrlimit(RLIMIT_FSIZE, &limit);
        QVERIFY(failed);
        QCOMPARE(read(target), "second");
        QCOMPARE(QDir(container).entryList({u".zelkam-*"_s}, QDir::Files | QDir::Hidden),
                 QStringList());
    }

    void removesOnlyWhatDeadProcessesLeft()
    {
        const auto part = [](char digit) {
            return u".zelkam-"_s + QString(32, QLatin1Char(digit)) + u".part"_s;
        };
        write(container + part('a'), "of one that died");
        write(container + part('b'), "of one that runs");
        const int running =
            ::open(QFile::encodeName(container + part('b')).constData(), O_RDONLY | O_CLOEXEC);
        QCOMPARE(::flock(running, LOCK_EX), 0);
        write(container + u".zelkam-notes.part"_s, "the person's");
        QVERIFY(QFile::link(outside, container + part('c')));
        QVERIFY(!setTemporaryDirectory(container));
        ::close(running);
        QVERIFY(!QFile::exists(container + part('a')));
        QCOMPARE(read(container + part('b')), "of one that runs");
        QCOMPARE(read(container + u".zelkam-notes.part"_s), "the person's");
        QVERIFY(QFile::exists(container + part('c')));
        // Nobody else's file gets such a name.
        QVERIFY(files.createFile(container + part('d'), "x"));
    }

    void copiesAnOpenFile()
    {
        QFile file(outside);
        QVERIFY(file.open(QIODevice::ReadWrite));
        file.seek(3'000'000);
        file.write("end");
        file.resize(4'000'000);
        file.close();
        const QString copy = container + u"copy"_s;
        // A file with a hole, one that is made up as it is read, one of another file system.
        for (const QString &path :
             {u"/proc/cpuinfo"_s, u"/sys/kernel/mm/transparent_hugepage/enabled"_s, outside}) {
            QVERIFY2(!files.createFile(copy, *RegularFile::open(path)), qPrintable(path));
            // The frequencies in cpuinfo change as one looks.
            const QByteArray start = read(path).left(100);
            QVERIFY(!start.isEmpty());
            QCOMPARE(read(copy).left(100), start);
            QCOMPARE(dataWithContentsOf(URL::fromFilePath(path)).value().left(100), start);
        }
        QCOMPARE(read(copy), read(outside));
        struct stat info = {};
        ::stat(QFile::encodeName(copy).constData(), &info);
        QVERIFY(info.st_blocks * 512 < 1'000'000);
    }

    void readsRegularFilesOnly()
    {
        const QString pipe = container + u"pipe"_s;
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        for (const QString &path : {pipe, u"/dev/zero"_s, container, container + u"missing"_s})
            QVERIFY2(!dataWithContentsOf(URL::fromFilePath(path)), qPrintable(path));
        for (const auto &url :
             {u"http://host/etc/hosts"_s, u"file://host/etc/hosts"_s, u"//host/etc/hosts"_s})
            QVERIFY2(!dataWithContentsOf(URL::fromString(url).value()), qPrintable(url));
    }

    void readsWhatTheHostMadeAnAddressFor()
    {
        write(container + u"a b"_s, "spaced");
        QCOMPARE(dataWithContentsOf(URL::fromFilePath(container + u"a b"_s)), "spaced");
        QCOMPARE(dataWithContentsOf(URL::fromString(container + u"a%20b"_s).value()), "spaced");
        const URL address = URL::fromString(u"host-files:/a%20b"_s).value();
        QVERIFY(!dataWithContentsOf(address));
        setAddressResolver([this](const URL &url) -> std::optional<QString> {
            return container + url.lastPathComponent();
        });
        QCOMPARE(dataWithContentsOf(address), "spaced");
        setAddressResolver({});
    }

    void trustsNoDefaultFolderOfOthers()
    {
        const QString foreseen = QFileInfo(root->path()).canonicalFilePath() +
                                 u"/tst_foundation_file_manager-"_s + QString::number(::geteuid());
        const auto choose = [&] {
            const QString chosen = chosenBelow(root->path());
            const auto others = QFile::WriteGroup | QFile::WriteOther;
            const bool isSafe = QFileInfo(chosen).isDir() && !(QFile::permissions(chosen) & others);
            return isSafe ? chosen : u"not safe: "_s + chosen;
        };
        QCOMPARE(choose(), foreseen + u'/'); // there was none
        QCOMPARE(choose(), foreseen + u'/'); // its own
        QCOMPARE(::chmod(QFile::encodeName(foreseen).constData(), 0777), 0);
        QVERIFY2(choose().startsWith(foreseen + u'-'), qPrintable(choose()));
        QVERIFY(QDir().rmdir(foreseen) && QFile::link(container, foreseen));
        QVERIFY2(choose().startsWith(foreseen + u'-'), qPrintable(choose()));
    }

    void makesNoTemporaryFolderForTheSystem()
    {
        const QString chosen = chosenBelow(root->filePath(u"missing/below"_s));
        QVERIFY2(chosen.startsWith(u"/tmp/"), qPrintable(chosen));
        QVERIFY(QDir().rmdir(chosen));
        QVERIFY(!QFileInfo::exists(root->filePath(u"missing"_s)));
    }

    void keepsTheContainerWhenANewOneCannotBeMade()
    {
        QVERIFY(setTemporaryDirectory(outside));
        QVERIFY(setTemporaryDirectory(outside + u"/below"_s));
        QCOMPARE(NSTemporaryDirectory(), container);
    }
};

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (QCoreApplication::arguments().contains(u"--print-container"_s)) {
        std::fputs(qPrintable(NSTemporaryDirectory()), stdout);
        return 0;
    }
    TestFileManager test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_file_manager.moc"
