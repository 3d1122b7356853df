#include "platform/ui/system_activities.h"

#include "platform/foundation/file_name.h"
#include "platform/foundation/regular_file.h"
#include "platform/ui/save_copy_view_controller.h"
#include "platform/ui/shared_files.h"
#include "platform/ui/ui_window.h"
#include "toast/toast.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMimeDatabase>
#include <QPointer>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

namespace zelkam {

namespace {

class Sentences
{
    Q_DECLARE_TR_FUNCTIONS(UIActivityViewController)
};

/// The end of an activity whose failure the person is told.
std::function<void(bool)> toldIfFailed(const QString &failure, QWidget *window,
                                       UIActivity::Done done)
{
    return [failure, window = QPointer(window), done = std::move(done)](bool succeeded) {
        if (!succeeded)
            makeToast(window, failure);
        done(succeeded);
    };
}

bool isInstalled(const QString &program)
{
    return !QStandardPaths::findExecutable(program).isEmpty();
}

/// Runs one of the desktop's own programs, without a shell. The process belongs to nobody: it may
/// be the application that the file was opened with, and lives on when this one ends.
void runProgram(const QString &program, const QStringList &arguments,
                std::function<void(bool)> ended)
{
    auto *process = new QProcess;
    const auto once = std::make_shared<std::function<void(bool)>>(std::move(ended));
    const auto end = [process, once](bool succeeded) {
        if (const auto callback = std::exchange(*once, nullptr))
            callback(succeeded);
        process->deleteLater();
    };
    QObject::connect(process, &QProcess::finished, process,
                     [end](int code, QProcess::ExitStatus status) {
                         end(status == QProcess::NormalExit && code == 0);
                     });
    QObject::connect(process, &QProcess::errorOccurred, process, [end](QProcess::ProcessError e) {
        if (e == QProcess::FailedToStart)
            end(false);
    });
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    process->start(program, arguments);
}

class SystemActivity : public UIActivity
{
public:
    SystemActivity(const char *type, const char *title, const char *icon)
        : m_type(type), m_title(title), m_icon(icon)
    {
    }
    QString activityType() const override { return QLatin1String(m_type); }
    QString activityTitle() const override { return Sentences::tr(m_title); }
    QString activityIconName() const override { return QLatin1String(m_icon); }

private:
    const char *m_type;
    const char *m_title;
    const char *m_icon;
};

class OpenActivity : public SystemActivity
{
public:
    OpenActivity()
        : SystemActivity("open",
                         QT_TRANSLATE_NOOP("UIActivityViewController", "Open in Another App"),
                         "document-open")
    {
    }
    bool canPerform(const QList<URL> &items) const override
    {
        const auto paths = sharedFilePaths(items);
        return paths && paths->size() == 1 && isInstalled(QStringLiteral("xdg-open")) &&
               !isProgram(paths->first());
    }
    void perform(const QList<URL> &items, QWidget *parent, Done done) override
    {
        const QStringList paths = sharedFilePaths(items).value_or(QStringList());
        runProgram(
            QStringLiteral("xdg-open"), paths,
            toldIfFailed(Sentences::tr("No application could open the file."), parent, done));
    }

private:
    /// To open a program is to run it, and a page chose this file.
    static bool isProgram(const QString &path)
    {
        const QMimeType type = QMimeDatabase().mimeTypeForFile(path);
        for (const char *program :
             {"application/x-executable", "application/x-sharedlib", "application/x-desktop",
              "application/x-shellscript", "application/x-ms-dos-executable",
              "application/vnd.microsoft.portable-executable", "application/java-archive",
              "application/vnd.appimage", "application/x-iso9660-appimage"}) {
            if (type.inherits(QLatin1String(program)))
                return true;
        }
        return QFileInfo(path).isExecutable();
    }
};

class SaveCopyActivity : public SystemActivity
{
public:
    SaveCopyActivity()
        : SystemActivity("save-copy", QT_TRANSLATE_NOOP("UIActivityViewController", "Save a Copy"),
                         "document-save-as")
    {
    }
    bool canPerform(const QList<URL> &items) const override
    {
        const auto paths = sharedFilePaths(items);
        return paths && paths->size() == 1;
    }
    void perform(const QList<URL> &items, QWidget *parent, Done done) override
    {
        auto *window = qobject_cast<UIWindow *>(parent);
        UIViewController *presenter = window ? window->topMostViewController() : nullptr;
        const QString path = sharedFilePaths(items).value_or(QStringList()).value(0);
        auto file = RegularFile::open(path);
        if (!presenter || !file) {
            toldIfFailed(Sentences::tr("The file cannot be read."), parent, done)(false);
            return;
        }
        const auto ended = [done, window = QPointer(window)](const QString &folder) {
            if (!folder.isEmpty())
                makeToast(window,
                          Sentences::tr("Saved to “%1”").arg(displayName(QDir(folder).dirName())));
            done(!folder.isEmpty());
        };
        presenter->present(std::make_shared<SaveCopyViewController>(
                               std::move(*file), QFileInfo(path).fileName(), ended),
                           true);
    }
};

class CopyFileActivity : public SystemActivity
{
public:
    CopyFileActivity()
        : SystemActivity("copy", QT_TRANSLATE_NOOP("UIActivityViewController", "Copy File"),
                         "edit-copy")
    {
    }
    bool canPerform(const QList<URL> &items) const override
    {
        return sharedFilePaths(items).has_value();
    }
    void perform(const QList<URL> &items, QWidget *parent, Done done) override
    {
        const auto paths = sharedFilePaths(items);
        if (paths) {
            QGuiApplication::clipboard()->setMimeData(fileMimeData(*paths).release());
            makeToast(parent, Sentences::tr("Copied"));
        }
        done(paths.has_value());
    }
};

class MailActivity : public SystemActivity
{
public:
    MailActivity()
        : SystemActivity("mail", QT_TRANSLATE_NOOP("UIActivityViewController", "Send by E-Mail"),
                         "mail-send")
    {
    }
    bool canPerform(const QList<URL> &items) const override
    {
        return sharedFilePaths(items) && isInstalled(QStringLiteral("xdg-email"));
    }
    void perform(const QList<URL> &items, QWidget *parent, Done done) override
    {
        QStringList arguments;
        for (const QString &path : sharedFilePaths(items).value_or(QStringList()))
            arguments << QStringLiteral("--attach") << path;
        runProgram(
            QStringLiteral("xdg-email"), arguments,
            toldIfFailed(Sentences::tr("No e-mail application could be started."), parent, done));
    }
};

class ShowInFolderActivity : public SystemActivity
{
public:
    ShowInFolderActivity()
        : SystemActivity("show-in-folder",
                         QT_TRANSLATE_NOOP("UIActivityViewController", "Show in Folder"),
                         "document-open-folder")
    {
    }
    bool canPerform(const QList<URL> &items) const override
    {
        return sharedFilePaths(items) && (QDBusConnection::sessionBus().isConnected() ||
                                          isInstalled(QStringLiteral("xdg-open")));
    }
    void perform(const QList<URL> &items, QWidget *parent, Done done) override
    {
        const QStringList paths = sharedFilePaths(items).value_or(QStringList());
        QStringList addresses;
        for (const QString &path : paths)
            addresses << QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
        const QString folder = QFileInfo(paths.value(0)).path();
        const auto shown =
            toldIfFailed(Sentences::tr("The folder could not be opened."), parent, done);
        if (!QDBusConnection::sessionBus().isConnected()) { // a call would have no answer
            runProgram(QStringLiteral("xdg-open"), {folder}, shown);
            return;
        }
        // https://www.freedesktop.org/wiki/Specifications/file-manager-interface/
        QDBusMessage call = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.FileManager1"),
            QStringLiteral("/org/freedesktop/FileManager1"),
            QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
        call << addresses << QString();
        auto *watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call));
        const auto ended = [done, shown, folder](QDBusPendingCallWatcher *answer) {
            answer->deleteLater();
            if (answer->isError())
                runProgram(QStringLiteral("xdg-open"), {folder}, shown);
            else
                done(true);
        };
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, ended);
    }
};

} // namespace

QList<std::shared_ptr<UIActivity>> systemActivities()
{
    return {std::make_shared<OpenActivity>(), std::make_shared<SaveCopyActivity>(),
            std::make_shared<CopyFileActivity>(), std::make_shared<MailActivity>(),
            std::make_shared<ShowInFolderActivity>()};
}

} // namespace zelkam
