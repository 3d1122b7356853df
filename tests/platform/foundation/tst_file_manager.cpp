#include "platform/foundation/file_manager.h"
#include "platform/foundation/file_reader.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>
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

    void refuses_data()
    {
        QTest::addColumn<QString>("path"); // {in} stands for the container, {out} for above it
        QTest::newRow("dots that lead out") << u"{in}/../secret"_s;
        QTest::newRow("dots that lead out from a folder") << u"{in}/Download/../../secret"_s;
        QTest::newRow("dots that stay inside") << u"{in}/Download/../Download/a"_s;
        QTest::newRow("an absolute path") << u"{out}/secret"_s;
        QTest::newRow("a path that begins like the container") << u"{in}side/secret"_s;
        QTest::newRow("a folder that is a link") << u"{in}/link/secret"_s;
        QTest::newRow("a relative path") << u"secret"_s;
        QTest::newRow("no path") << u""_s;
        QTest::newRow("a path with a null") << u"{in}/a\0b"_s;
        QTest::newRow("the container") << u"{in}/"_s;
        QTest::newRow("the container without its slash") << u"{in}"_s;
        QTest::newRow("a folder that the application lives by") << u"{in}/Download"_s;
        QTest::newRow("the same, spelled out") << u"{in}//Download/./"_s;
    }
    void refuses()
    {
        QFETCH(QString, path);
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
        QVERIFY(files.fileExists(container + u"Download/secret-link"_s));
        QVERIFY(!files.removeItem(container + u"Download/secret-link"_s));
        QVERIFY(!files.fileExists(container + u"Download/secret-link"_s));
        QCOMPARE(read(outside), "content");
    }

    void removesAFolderWithAllItHolds()
    {
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

    void copiesAnOpenFile_data()
    {
        QTest::addColumn<QString>("path"); // empty: a file with a hole in it
        QTest::newRow("a file with a hole") << u""_s;
        QTest::newRow("a file that is made up as it is read") << u"/proc/cpuinfo"_s;
        QTest::newRow("a file of another file system")
            << u"/sys/kernel/mm/transparent_hugepage/enabled"_s;
    }
    void copiesAnOpenFile()
    {
        QFETCH(QString, path);
        if (path.isEmpty()) {
            path = outside;
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadWrite));
            file.seek(3'000'000);
            file.write("end");
            file.resize(4'000'000);
        }
        const auto from = RegularFile::open(path);
        QVERIFY(from);
        QVERIFY(!files.createFile(container + u"copy"_s, *from));
        QVERIFY(!read(path).isEmpty());
        // The frequencies in cpuinfo change as one looks.
        QCOMPARE(read(container + u"copy"_s).left(100), read(path).left(100));
        QCOMPARE(dataWithContentsOf(URL::fromFilePath(path)).value().left(100),
                 read(path).left(100));
        if (path == outside) {
            QCOMPARE(read(container + u"copy"_s), read(path));
            struct stat info = {};
            ::stat(QFile::encodeName(container + u"copy"_s).constData(), &info);
            QVERIFY(info.st_blocks * 512 < 1'000'000);
        }
    }

    void readsRegularFilesOnly()
    {
        const QString pipe = container + u"pipe"_s;
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QVERIFY(!dataWithContentsOf(URL::fromFilePath(pipe)));
        QVERIFY(!dataWithContentsOf(URL::fromFilePath(u"/dev/zero"_s)));
        QVERIFY(!dataWithContentsOf(URL::fromFilePath(container)));
        QVERIFY(!dataWithContentsOf(URL::fromFilePath(container + u"missing"_s)));
        QVERIFY(!dataWithContentsOf(URL::fromString(u"http://host/etc/hosts"_s).value()));
        QVERIFY(!dataWithContentsOf(URL::fromString(u"file://host/etc/hosts"_s).value()));
        QVERIFY(!dataWithContentsOf(URL::fromString(u"//host/etc/hosts"_s).value()));
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

    // The default folder is chosen once, so other programs choose it here.
    void trustsNoDefaultFolderOfOthers_data()
    {
        QTest::addColumn<int>("mode"); // of the folder found there; 0 for a link
        QTest::addColumn<bool>("isUsed");
        QTest::newRow("none") << -1 << true;
        QTest::newRow("its own") << 0700 << true;
        QTest::newRow("one that others can write to") << 0777 << false;
        QTest::newRow("a link") << 0 << false;
    }
    void trustsNoDefaultFolderOfOthers()
    {
        QFETCH(const int, mode);
        const QString foreseen =
            root->path() + u"/tst_foundation_file_manager-"_s + QString::number(::geteuid());
        if (mode > 0) {
            QVERIFY(QDir().mkdir(foreseen));
            QCOMPARE(::chmod(QFile::encodeName(foreseen).constData(), mode_t(mode)), 0);
        } else if (mode == 0) {
            QVERIFY(QFile::link(container, foreseen));
        }
        QProcess program;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"TMPDIR"_s, root->path());
        program.setProcessEnvironment(environment);
        program.start(QCoreApplication::applicationFilePath(), {u"--print-container"_s});
        QVERIFY(program.waitForFinished());
        const QString chosen = QString::fromUtf8(program.readAllStandardOutput());
        QTEST(chosen == QFileInfo(foreseen).canonicalFilePath() + u'/', "isUsed");
        QVERIFY2(chosen.startsWith(foreseen) && QFileInfo(chosen).isDir(), qPrintable(chosen));
        QVERIFY(!(QFile::permissions(chosen) & (QFile::WriteGroup | QFile::WriteOther)));
    }

    void makesNoTemporaryFolderForTheSystem()
    {
        const QString missing = root->filePath(u"missing/below"_s);
        QProcess program;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"TMPDIR"_s, missing);
        program.setProcessEnvironment(environment);
        program.start(QCoreApplication::applicationFilePath(), {u"--print-container"_s});
        QVERIFY(program.waitForFinished());
        const QString chosen = QString::fromUtf8(program.readAllStandardOutput());
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
