#pragma once

#include <QColor>
#include <QFont>
#include <QSizeF>

#include <chrono>

namespace zelkam {

/// A time span of the toast library. Any std::chrono duration converts to it.
using ToastDuration = std::chrono::duration<double>;

/// How the lines of a text lie in its label. `natural` follows the direction of the text.
enum class TextAlignment { left = 0, center = 1, right = 2, justified = 3, natural = 4 };

/// A share of a length. Every assignment clamps to the range 0 to 1; not-a-number stays as it is.
class UnitFraction
{
public:
    constexpr UnitFraction(double value) : m_value(value > 1.0 ? 1.0 : (value < 0.0 ? 0.0 : value))
    {
    }
    constexpr operator double() const { return m_value; }

private:
    double m_value;
};

/// How a bubble looks. A value: a toast is built from a copy and does not follow later changes.
/// Lengths are points. Fields other than the two fractions are taken as they are.
struct ToastStyle
{
    /// The default fonts are the application's font at 16 points, the title's in bold.
    ToastStyle();

    QColor backgroundColor = QColor(0, 0, 0, 204);
    QColor titleColor = Qt::white;
    QColor messageColor = Qt::white;

    /// The largest label, as a share of the host's width and height.
    UnitFraction maxWidthPercentage = 0.8;
    UnitFraction maxHeightPercentage = 0.8;

    /// The space round and between image, title and message. The shared style's vertical padding
    /// is also the distance to the host's edge.
    double horizontalPadding = 10.0;
    double verticalPadding = 10.0;

    /// At most half of the bubble's shorter side is drawn.
    double cornerRadius = 10.0;

    QFont titleFont;
    QFont messageFont;
    TextAlignment titleAlignment = TextAlignment::left;
    TextAlignment messageAlignment = TextAlignment::left;

    /// The most lines that are shown, 0 for no limit. Text that is cut ends in an ellipsis.
    int titleNumberOfLines = 0;
    int messageNumberOfLines = 0;

    bool displayShadow = false;
    /// The shadow of the activity bubble. That of a message bubble is always black.
    QColor shadowColor = Qt::black;
    float shadowOpacity = 0.8F;
    /// The standard deviation of the blur.
    double shadowRadius = 6.0;
    QSizeF shadowOffset = QSizeF(4.0, 4.0);

    /// The rectangle into which an image is scaled, its aspect ratio kept.
    QSizeF imageSize = QSizeF(80.0, 80.0);

    QSizeF activitySize = QSizeF(100.0, 100.0);

    /// The length of a fade-in and of a fade-out. Only the shared style's is read.
    ToastDuration fadeDuration = ToastDuration(0.2);

    QColor activityIndicatorColor = Qt::white;
    QColor activityBackgroundColor = QColor(0, 0, 0, 204);
};

} // namespace zelkam
