#pragma once

#include <QString>

namespace zelkam {

/// Writes one line to standard output, whole even when several threads write. From any thread.
void print(const QString &line);

} // namespace zelkam
