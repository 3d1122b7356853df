// Any Content-Disposition field gives no name or one harmless path component.
#include "platform/foundation/percent_encoding.h"
#include "platform/network/header_text.h"
#include "platform/network/url_response.h"

#include <cstdlib>

using namespace zelkam;

namespace {

bool isHarmless(const QString &name)
{
    return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..") &&
           !name.contains(u'/') && !name.contains(u'\\') && !name.contains(QChar(0)) &&
           !name.contains(u'\n') && !name.contains(QChar(0x202E)) && name.isValidUtf16() &&
           name.toUtf8().size() <= 255;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static const URL url = *URL::fromString(QStringLiteral("http://h/"));
    const QByteArrayView bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const HTTPURLResponse response(
        url, 200,
        {{QStringLiteral("Content-Disposition"), headerText(bytes)},
         {QStringLiteral("Content-Type"), QStringLiteral("text/plain")}});
    const auto name = response.suggestedFilename();
    if (!name)
        return 0;
    const auto decoded = removingPercentEncoding(*name);
    if (!isHarmless(*name) || (decoded && !isHarmless(*decoded)))
        std::abort();
    return 0;
}
