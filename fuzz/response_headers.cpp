// Any bytes of a server, taken line by line as they come from curl.
#include "platform/network/header_collector.h"
#include "platform/network/header_text.h"
#include "platform/network/url_response.h"

#include <algorithm>
#include <cstdlib>

using namespace zelkam;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const auto *bytes = reinterpret_cast<const char *>(data);
    HeaderCollector collector;
    for (const char *line = bytes, *end = bytes + size; line < end;) {
        const char *next = std::min(std::find(line, end, '\n') + 1, end);
        if (!collector.addLine(line, static_cast<std::size_t>(next - line)))
            break;
        line = next;
    }
    static const URL url = *URL::fromString(QStringLiteral("http://h/a"));
    const HTTPURLResponse response(url, collector.status(), collector.fields());
    for (const QString &value : response.allHeaderFields()) {
        if (headerText(headerBytes(value)) != value)
            std::abort();
    }
    (void)response.suggestedFilename();
    return 0;
}
