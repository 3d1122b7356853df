// However replies are made of texts of any length, what the page cuts out of the body by the
// lengths in its first line are those texts. Each line of the input is a text; a digit at its
// start makes it that many times 32 KiB longer.
#include "app/reply_body.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cstdlib>

using namespace zelkam;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    QVariantList texts;
    for (const QByteArray &line : bytes.split('\n')) {
        const int times = line.isEmpty() ? 0 : line[0] - '0';
        texts += line + QByteArray((times > 0 && times < 10 ? times : 0) * 32768, 'x');
    }
    ScriptReply reply;
    reply.success = reply.hasData = true;
    reply.data = texts;
    const QByteArray body = replyBody({reply}, "t").join();
    const qsizetype end = body.indexOf('\n');
    const QJsonObject line = QJsonDocument::fromJson(body.left(end)).object();
    QByteArrayList raw;
    qsizetype at = end + 1;
    for (const auto &length : line[QLatin1String("texts")].toArray()) {
        raw += body.mid(at, length.toInteger());
        at += length.toInteger();
    }
    const QJsonValue first = line[QLatin1String("replies")][0][QLatin1String("reply")];
    const QJsonArray got = first[QLatin1String("data")].toArray();
    if (got.size() != texts.size() || end < 0 || at != body.size())
        std::abort();
    for (qsizetype i = 0; i < texts.size(); ++i) {
        const QByteArray sent = texts[i].toByteArray();
        if (got[i].isObject() ? raw.value(got[i][QLatin1String("t")].toInteger()) != sent
                              : got[i].toString() != QString::fromUtf8(sent))
            std::abort();
    }
    return 0;
}
