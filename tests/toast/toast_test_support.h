#pragma once

#include "toast/toast.h"
#include "toast/toast_effect.h"
#include "toast/toast_host.h"

#include <QFontDatabase>
#include <QTest>

namespace zelkam::test {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

/// Puts the shared defaults back, with short fades and the test font: at its size of 16 a letter is
/// 8 points wide and a line 16 high; the title is one quarter larger, 10 and 20.
inline void resetToasts()
{
    static const int id = QFontDatabase::addApplicationFont(QStringLiteral(ZELKAM_TEST_FONT));
    if (id < 0)
        qFatal("The test font is missing.");
    ToastManager &manager = ToastManager::shared();
    manager.completion.toastView = nullptr;
    manager.style = {};
    manager.style.fadeDuration = 20ms;
    manager.style.messageFont = QFont(u"Zelkam Test"_s);
    manager.style.messageFont.setPixelSize(16);
    manager.style.titleFont = manager.style.messageFont;
    manager.style.titleFont.setPixelSize(20);
    manager.isTapToDismissEnabled = true;
    manager.isQueueEnabled = false;
    setMotionReduced(false);
}

/// A host that keeps a log of how its toasts ended: "name." by time, "name!" by a tap.
class Host : public QWidget
{
public:
    explicit Host(QSize size = {400, 400}) { resize(size); }

    ToastArray active() { return *ToastHost::of(this).activeToasts(); }
    ToastArray waiting() { return *ToastHost::of(this).queue(); }

    QWidget *toast(const QString &name, ToastDuration duration = 1h)
    {
        makeToast(this, name, duration, QPointF(width() * 0.5, height() * 0.5), {}, {},
                  ToastManager::shared().style,
                  [this, name](bool didTap) { log += name + (didTap ? u'!' : u'.'); });
        return waiting().isEmpty() ? active().last() : waiting().last();
    }

    QString log;
};

inline double alphaOf(QWidget *toast)
{
    return ToastEffect::of(toast)->alpha();
}
inline ToastTimer *timerOf(QWidget *toast)
{
    return toast->property(ToastKeys::timer).value<ToastTimer *>();
}
inline QWidget *activityOf(QWidget *host)
{
    return host->property(ToastKeys::activityView).value<QPointer<QWidget>>();
}

} // namespace zelkam::test
