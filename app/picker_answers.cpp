#include "app/picker_answers.h"

#include "app/screenshots.h"
#include "platform/ui/ui_document_picker_view_controller.h"
#include "platform/ui/ui_window.h"

namespace zelkam {

PickerAnswers::PickerAnswers(UIWindow &window, Screenshots *screenshots)
    : m_screenshots(screenshots)
{
    // Queued, as the screen's own work for its appearance comes first.
    connect(&window, &UIWindow::screenDidAppear, this, [this](UIViewController *screen) {
        QMetaObject::invokeMethod(
            this,
            [this, screen = QPointer<UIViewController>(screen)] {
                if (screen)
                    answer(screen);
            },
            Qt::QueuedConnection);
    });
}

void PickerAnswers::answer(UIViewController *screen)
{
    auto *picker = qobject_cast<UIDocumentPickerViewController *>(screen);
    if (!picker || m_answers.isEmpty())
        return;
    const PickerAnswer answer = m_answers.takeFirst();
    const auto cancel = [](UIViewController *shown) {
        static_cast<UIDocumentPickerViewController *>(shown)->cancel();
    };
    if (!answer) {
        afterPicture(picker, cancel);
        return;
    }
    connect(
        picker, &UIDocumentPickerViewController::selectionShown, this,
        [this, picker, cancel] {
            const auto accept = [](UIViewController *shown) {
                static_cast<UIDocumentPickerViewController *>(shown)->accept();
            };
            if (picker->selection().isEmpty())
                afterPicture(picker, cancel);
            else
                afterPicture(picker, accept);
        },
        Qt::SingleShotConnection);
    picker->showSelection(*answer);
}

void PickerAnswers::afterPicture(UIViewController *screen, void (*then)(UIViewController *))
{
    if (!m_screenshots) {
        then(screen);
        return;
    }
    m_screenshots->request(QStringLiteral("selection"));
    connect(
        m_screenshots, &Screenshots::idle, screen, [screen, then] { then(screen); },
        Qt::SingleShotConnection);
}

} // namespace zelkam
