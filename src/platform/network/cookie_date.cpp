#include "platform/network/cookie_date.h"

#include <QRegularExpression>
#include <QString>

namespace zelkam {

namespace {

QRegularExpression pattern(const char *text)
{
    return QRegularExpression(QLatin1String(text), QRegularExpression::CaseInsensitiveOption);
}

int monthOf(const QString &name)
{
    static const QString names = QStringLiteral("janfebmaraprmayjunjulaugsepoctnovdec");
    return static_cast<int>(names.indexOf(name.toLower())) / 3 + 1;
}

int fullYear(int year)
{
    if (year < 70)
        return year + 2000;
    return year < 100 ? year + 1900 : year;
}

} // namespace

std::optional<QDateTime> readCookieDate(const QByteArray &text)
{
    static const QRegularExpression delimiters =
        pattern(R"([\t\x20-\x2F\x3B-\x40\x5B-\x60\x7B-\x7E]+)");
    // What a token may be, in the order in which it is tried; each is taken once.
    static const QRegularExpression patterns[] = {
        pattern(R"(^([0-9]{1,2}):([0-9]{1,2}):([0-9]{1,2})(?![0-9]))"),
        pattern("^([0-9]{1,2})(?![0-9])"),
        pattern("^(jan|feb|mar|apr|may|jun|jul|aug|sep|oct|nov|dec)"),
        pattern("^([0-9]{2,4})(?![0-9])"),
    };
    QRegularExpressionMatch found[std::size(patterns)];
    const QStringList tokens = QString::fromLatin1(text).split(delimiters);
    for (const QString &token : tokens) {
        for (std::size_t i = 0; i < std::size(patterns); ++i) {
            if (found[i].hasMatch())
                continue;
            found[i] = patterns[i].match(token);
            if (found[i].hasMatch())
                break;
        }
    }
    const auto &[clock, day, month, year] = found;
    if (!clock.hasMatch() || !day.hasMatch() || !month.hasMatch() || !year.hasMatch())
        return std::nullopt;
    const QDate date(fullYear(year.captured(1).toInt()), monthOf(month.captured(1)),
                     day.captured(1).toInt());
    const QTime time(clock.captured(1).toInt(), clock.captured(2).toInt(),
                     clock.captured(3).toInt());
    if (!date.isValid() || !time.isValid() || date.year() < 1601)
        return std::nullopt;
    return QDateTime(date, time, Qt::UTC);
}

} // namespace zelkam
