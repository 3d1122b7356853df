#pragma once

namespace zelkam {

/// Makes libheif decode HEVC with a decoder of ours, on libde265 as its own does. It spreads a
/// large picture over several threads, which libheif does for the tiles of a grid only, and can
/// leave out the filters that smooth what is not seen in a small version. Any number of times, any
/// thread.
void registerHevcDecoder();

/// How the decoders decode that are made from now on, on whatever thread.
struct HevcDecoding
{
    /// For pictures that will be shown at half their size or less: without deblocking and sample
    /// adaptive offset (H.265, 8.7), which take up to half of the time. Other samples of an intra
    /// picture do not depend on these filters.
    bool isDraft = false;
    /// For large pictures, each on several threads: starting them takes longer than a small one.
    bool isThreaded = false;
};
void setHevcDecoding(HevcDecoding decoding);

} // namespace zelkam
