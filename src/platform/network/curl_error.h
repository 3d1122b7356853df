#pragma once

#include "platform/network/url_error.h"

#include <curl/curl.h>

namespace zelkam {

/// The error that a result of curl stands for; the text is curl's own message, which may be
/// empty. A result that is not known here keeps its number in the debug description.
/// @param isReadingHead  the answer has begun, and its header fields have not all come
URLError errorOfCurl(CURLcode result, const char *text, bool isReadingHead);

} // namespace zelkam
