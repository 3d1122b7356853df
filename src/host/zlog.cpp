#include "host/zlog.h"

#include <QLoggingCategory>

namespace zelkam {

namespace {
Q_LOGGING_CATEGORY(logZelkam, "zelkam")
}

void ZLog::debug(const QString &msg)
{
    qCDebug(logZelkam).noquote() << msg;
}

} // namespace zelkam
