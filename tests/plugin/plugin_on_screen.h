#pragma once

#include "platform/foundation/file_manager.h"
#include "platform/photos/saved_photos_album.h"
#include "plugin/zelkam_mobile_contents_plugin.h"
#include "support/recording_call.h"
#include "support/sample_files.h"
#include "support/screen_test.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

namespace zelkam::test {

/// A page on a phone's screen, the plug-in that it calls through the meta-object as a host does,
/// and folders of their own, for each test anew.
class PluginOnScreen : public ScreenTest
{
protected:
    std::unique_ptr<QTemporaryDir> root;
    std::shared_ptr<ZelkamMobileContentsPlugin> plugin;

    void begin()
    {
        root = std::make_unique<QTemporaryDir>();
        QVERIFY(!setTemporaryDirectory(root->filePath(QStringLiteral("container"))));
        QVERIFY(QDir(root->path()).mkpath(QStringLiteral("pictures")));
        setPicturesDirectory(root->filePath(QStringLiteral("pictures")));
        openWindow();
        plugin = makePlugin<ZelkamMobileContentsPlugin>();
        plugin->setViewController(page.get());
    }
    void end()
    {
        plugin.reset();
        closeWindow();
    }

    std::shared_ptr<RecordingCall> call(const char *command,
                                        const std::optional<QVariantMap> &arguments,
                                        CommandDelegate *delegate = nullptr)
    {
        auto recording = std::make_shared<RecordingCall>(arguments, delegate);
        QMetaObject::invokeMethod(plugin.get(), command,
                                  Q_ARG(zelkam::CallBackManagerPtr, recording));
        return recording;
    }

    /// The screen over the page once nothing moves; null when there is none of this kind.
    template<typename Screen>
    std::shared_ptr<Screen> shown()
    {
        std::shared_ptr<Screen> screen;
        const bool isThere = QTest::qWaitFor([&] {
            screen = std::dynamic_pointer_cast<Screen>(page->presentedViewController());
            return screen && screen->isVisible() && !window->isInTransition();
        });
        return isThere ? screen : nullptr;
    }
    bool allGone()
    {
        return QTest::qWaitFor([this] { return !page->presentedViewController(); });
    }

    /// Writes a file, and the folders that it lies in.
    QString write(const QString &name, const QByteArray &content)
    {
        const QString path = root->filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        return sample::write(path, content) ? path : QString();
    }
};

} // namespace zelkam::test
