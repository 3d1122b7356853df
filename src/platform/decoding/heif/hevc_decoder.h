#pragma once

namespace zelkam {

/// Makes libheif decode HEVC with a decoder of ours, on libde265 as its own does. It spreads a
/// large picture over several threads, which libheif does for the tiles of a grid only, and can
/// leave out the filters that smooth what is not seen in a small version. Any number of times, any
/// thread.
void registerHevcDecoder();

/// Whether the decoders that are made from now on, on whatever thread, are for pictures that will
/// be shown at half their size or less: without deblocking and sample adaptive offset (H.265, 8.7),
/// which take up to half of the time. Other samples of an intra picture do not depend on these
/// filters.
void setHevcDraft(bool isDraft);

} // namespace zelkam
