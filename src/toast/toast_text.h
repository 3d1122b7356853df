#pragma once

#include "toast/toast_style.h"

#include <QString>
#include <QTextLayout>

#include <memory>
#include <vector>

class QPainter;

namespace zelkam {

/// A plain text that is broken into lines, whatever it contains: no mark-up is understood. Of the
/// control characters, line ends and tabs count and the others are not drawn.
///
/// Lines break between words, and within one that is longer than a line. Each paragraph runs in
/// the direction of its own first letter. A text that is cut ends in an ellipsis.
class ToastText
{
public:
    ToastText(const QString &text, const QFont &font, TextAlignment alignment, int numberOfLines);

    /// The room that the text takes when it may be `maximumWidth` wide, in whole points. Nothing
    /// for an empty text. The height is that of all lines that the limit allows.
    QSizeF sizeThatFits(double maximumWidth) const;

    /// Draws the lines that fit into `rect`, at least one, half-way between its top and bottom.
    void draw(QPainter &painter, const QRectF &rect) const;

private:
    struct Line
    {
        std::shared_ptr<QTextLayout> layout;
        int index;

        QTextLine textLine() const { return layout->lineAt(index); }
        double height() const;
    };

    std::vector<Line> breakLines(double width, double height) const;
    std::shared_ptr<QTextLayout> layOut(const QString &text, bool rightToLeft, bool wraps) const;

    QList<QString> m_paragraphs;
    QFont m_font;
    TextAlignment m_alignment;
    int m_numberOfLines;
};

} // namespace zelkam
