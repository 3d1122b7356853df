// Whatever text stands for arguments, they are read or refused, and as a reply they go to the page
// as one line of ASCII that JSON can read.
#include "app/script_arguments.h"
#include "app/reply_body.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <cstdlib>

using namespace zelkam;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const auto text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto arguments = readScriptArguments(text, QStringLiteral("t"));
    if (!arguments || !arguments->dictionary)
        return 0;
    ScriptReply reply;
    reply.success = reply.hasData = true;
    reply.data = *arguments->dictionary;
    const QList<QByteArray> body = replyBody({reply}, "t");
    const QByteArray line = body.first();
    if (std::any_of(line.begin(), line.end() - 1, [](char c) { return c < ' ' || c > '~'; }))
        std::abort();
    if (body.size() != 1 || !QJsonDocument::fromJson(line).isObject())
        std::abort();
    return 0;
}
