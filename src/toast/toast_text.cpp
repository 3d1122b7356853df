#include "toast/toast_text.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zelkam {

// More than any screen shows. Laying out a text of megabytes would stall the application.
static constexpr int longestText = 10'000;
// Beyond this the fixed-point numbers of QTextLayout overflow.
static constexpr double widestLine = 1'000'000.0;
static constexpr QChar ellipsis(0x2026);

ToastText::ToastText(const QString &text, const QFont &font, TextAlignment alignment,
                     int numberOfLines)
    : m_font(font), m_alignment(alignment), m_numberOfLines(std::max(0, numberOfLines))
{
    if (text.isEmpty())
        return;
    static const QRegularExpression lineEnd(QStringLiteral("\r\n|[\n\r\v\f\u0085\u2028\u2029]"));
    const bool tooLong = text.size() > longestText;
    m_paragraphs = (tooLong ? text.left(longestText) + ellipsis : text).split(lineEnd);
    // Fonts draw a box for each of them.
    for (QString &paragraph : m_paragraphs) {
        paragraph.removeIf(
            [](QChar c) { return c.category() == QChar::Other_Control && c != u'\t'; });
    }
}

double ToastText::Line::height() const
{
    return textLine().height() + std::max(0.0, textLine().leading());
}

std::shared_ptr<QTextLayout> ToastText::layOut(const QString &text, bool rightToLeft,
                                               bool wraps) const
{
    QTextOption option;
    option.setTextDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    option.setWrapMode(wraps ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
    switch (m_alignment) {
    case TextAlignment::left:
        option.setAlignment(Qt::AlignLeft);
        break;
    case TextAlignment::center:
        option.setAlignment(Qt::AlignHCenter);
        break;
    case TextAlignment::right:
        option.setAlignment(Qt::AlignRight);
        break;
    case TextAlignment::justified:
        option.setAlignment(Qt::AlignJustify);
        break;
    case TextAlignment::natural:
        option.setAlignment(rightToLeft ? Qt::AlignRight : Qt::AlignLeft);
        break;
    }
    auto layout = std::make_shared<QTextLayout>(text, m_font);
    layout->setTextOption(option);
    return layout;
}

std::vector<ToastText::Line> ToastText::breakLines(double width, double height) const
{
    // Not-a-number, from a style whose fraction is none, counts as no limit.
    const double lineWidth = width < widestLine ? std::max(0.0, width) : widestLine;
    std::vector<Line> lines;
    double used = 0.0;
    for (qsizetype p = 0; p < m_paragraphs.size(); ++p) {
        const QString &paragraph = m_paragraphs.at(p);
        const bool rightToLeft = paragraph.isRightToLeft();
        const auto layout = layOut(paragraph, rightToLeft, true);
        layout->beginLayout();
        for (int index = 0;; ++index) {
            QTextLine line = layout->createLine();
            if (!line.isValid())
                break;
            line.setLeadingIncluded(true);
            line.setLineWidth(lineWidth);
            const Line next{layout, index};
            const bool limited = m_numberOfLines > 0 && int(lines.size()) == m_numberOfLines;
            if (!lines.empty() && (limited || used + next.height() > height)) {
                // The last line that may be shown takes the rest of its paragraph, cut.
                layout->endLayout();
                const Line last = lines.back();
                const bool sameParagraph = last.layout == layout;
                const QString &whole = m_paragraphs.at(sameParagraph ? p : p - 1);
                QString rest = whole.mid(last.textLine().textStart());
                if (!sameParagraph)
                    rest += ellipsis;
                const QString cut =
                    QFontMetricsF(m_font).elidedText(rest, Qt::ElideRight, lineWidth);
                const auto tail = layOut(cut, whole.isRightToLeft(), false);
                tail->beginLayout();
                QTextLine tailLine = tail->createLine();
                tailLine.setLeadingIncluded(true);
                tailLine.setLineWidth(lineWidth);
                tail->endLayout();
                lines.back() = {tail, 0};
                return lines;
            }
            used += next.height();
            lines.push_back(next);
        }
        layout->endLayout();
    }
    return lines;
}

QSizeF ToastText::sizeThatFits(double maximumWidth) const
{
    double width = 0.0;
    double height = 0.0;
    for (const Line &line : breakLines(maximumWidth, std::numeric_limits<double>::infinity())) {
        width = std::max(width, line.textLine().naturalTextWidth());
        height += line.height();
    }
    return {std::ceil(width), std::ceil(height)};
}

void ToastText::draw(QPainter &painter, const QRectF &rect) const
{
    const std::vector<Line> lines = breakLines(rect.width(), rect.height());
    double height = 0.0;
    for (const Line &line : lines)
        height += line.height();
    double y = rect.top() + std::max(0.0, std::floor((rect.height() - height) * 0.5));
    for (const Line &line : lines) {
        line.textLine().draw(&painter, QPointF(rect.left(), y));
        y += line.height();
    }
}

} // namespace zelkam
