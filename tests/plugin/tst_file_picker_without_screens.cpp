#include "plugin/zelkam_mobile_contents_plugin.h"
#include "support/recording_call.h"

#include <QtTest>

using namespace zelkam;
using namespace Qt::StringLiterals;

/// A program that has no widgets can have no picker.
class TestFilePickerWithoutScreens : public QObject
{
    Q_OBJECT

private slots:
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

QTEST_GUILESS_MAIN(TestFilePickerWithoutScreens)
#include "tst_file_picker_without_screens.moc"
