#pragma once

#include <QString>

namespace zelkam {

/// The host's log. Debug lines go to the logging category "zelkam", which is on by default.
class ZLog
{
public:
    /// From any thread.
    static void debug(const QString &msg);
};

} // namespace zelkam
