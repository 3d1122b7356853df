#pragma once

#include <QString>

namespace zelkam {

/// The folder of the container that downloads go to, without a slash at its end; it may not exist
/// yet. From the first call on, the file service keeps it from being removed or replaced: no
/// file that a server or a person names "Download" can take its place. From any thread.
QString downloadFolder();

} // namespace zelkam
