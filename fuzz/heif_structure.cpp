// What the boxes of any file claim is read within its bounds, and no image is free of cost.
#include "platform/images/heif/heif_structure.h"

#include <cstdlib>

using namespace zelkam;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const QByteArrayView bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto structure = HeifStructure::read(bytes);
    const auto cost = structure ? structure->cost(structure->primaryItem()) : std::nullopt;
    if (cost && (cost->pixels <= 0 || cost->bytes <= 0))
        std::abort();
    return 0;
}
