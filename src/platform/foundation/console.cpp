#include "platform/foundation/console.h"

#include <QByteArray>
#include <cstdio>

namespace zelkam {

void print(const QString &line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    // One call to the stream is one locked write.
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}

} // namespace zelkam
