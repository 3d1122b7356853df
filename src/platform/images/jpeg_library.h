#pragma once

#include <csetjmp>
#include <cstdio> // jpeglib.h needs it before itself
#include <jpeglib.h>

namespace zelkam {

/// The library's way out of an error is a jump; it writes nothing to the standard error output.
/// Between setjmp() and the jump no object may be made that has a destructor.
struct JpegErrors
{
    jpeg_error_mgr manager;
    std::jmp_buf wayOut;

    jpeg_error_mgr *use()
    {
        jpeg_std_error(&manager);
        manager.error_exit = [](j_common_ptr info) {
            std::longjmp(reinterpret_cast<JpegErrors *>(info->err)->wayOut, 1);
        };
        manager.output_message = [](j_common_ptr) {};
        return &manager;
    }
};

} // namespace zelkam
