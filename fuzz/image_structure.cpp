// The markers of any JPEG, the blocks of any GIF or BMP, and what holds an Exif block are walked
// within the file's bounds.
#include "platform/images/image_orientation.h"
#include "platform/images/image_wholeness.h"
#include "platform/images/jpeg_structure.h"

#include <cstdlib>

using namespace zelkam;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    if (const auto jpeg = readJpegStructure(bytes)) {
        if (jpeg->size.isEmpty() || jpeg->scans < 0)
            std::abort();
    }
    gifIsWhole(bytes);
    bmpIsWhole(bytes);
    for (const char *format : {"jpeg", "png", "webp"})
        exifTransformation(bytes, format);
    return 0;
}
