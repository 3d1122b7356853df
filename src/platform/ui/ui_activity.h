#pragma once

#include "platform/foundation/url.h"

#include <QList>
#include <QString>
#include <functional>

class QWidget;

namespace zelkam {

/// Something that can be done with shared items: one row of the share sheet.
class UIActivity
{
public:
    /// Whether it was done. A user who cancels has not done it.
    using Done = std::function<void(bool completed)>;

    virtual ~UIActivity() = default;
    virtual QString activityType() const = 0;     ///< a constant identifier
    virtual QString activityTitle() const = 0;    ///< for the person
    virtual QString activityIconName() const = 0; ///< a freedesktop name
    /// Whether this machine can do it with these items; otherwise it is greyed out.
    virtual bool canPerform(const QList<URL> &withActivityItems) const = 0;
    /// Does it. Calls done exactly once, now or later, on the main thread. What it
    /// shows lies on the given window; a failure is told to the user by the activity itself.
    virtual void perform(const QList<URL> &activityItems, QWidget *parent, Done done) = 0;
};

} // namespace zelkam
