#pragma once

#include "toast/toast.h"

#include <QFontDatabase>
#include <QTest>

namespace zelkam::test {

/// A style in the test font: at its size of 16 a letter is 8 points wide and a line 16 high; the
/// title is one quarter larger, 10 and 20.
inline ToastStyle testStyle()
{
    static const int id = QFontDatabase::addApplicationFont(QStringLiteral(ZELKAM_TEST_FONT));
    if (id < 0)
        qFatal("The test font is missing.");
    ToastStyle style;
    style.messageFont = QFont(QStringLiteral("Zelkam Test"));
    style.messageFont.setPixelSize(16);
    style.titleFont = style.messageFont;
    style.titleFont.setPixelSize(20);
    return style;
}

/// Puts the shared defaults back, with short fades, and lets toasts of earlier tests go.
inline void resetToasts()
{
    ToastManager &manager = ToastManager::shared();
    manager.completion.toastView = nullptr;
    manager.style = testStyle();
    manager.style.fadeDuration = std::chrono::milliseconds(20);
    manager.isTapToDismissEnabled = true;
    manager.isQueueEnabled = false;
    manager.duration = std::chrono::seconds(3);
    manager.position = ToastPosition::bottom;
    setMotionReduced(false);
}

} // namespace zelkam::test
