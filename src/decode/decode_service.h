#pragma once

#include "platform/decoding/decode_work.h"

namespace zelkam {

/// What is done with each wish; see DecodeWork::perform().
using WorkOnWish = std::function<DecodeOutcome(const DecodeWish &wish, const FileMapping &file,
                                               const DecodeProgress &progress)>;

/// The program's whole life: locks the process in, takes wishes from its standard input, which is
/// a socket, and ends with the other side of it. What the work needs of the system (codecs, fonts)
/// has to be loaded before.
///
/// @return the program's exit status
int serveDecoding(const WorkOnWish &work);

} // namespace zelkam
