#pragma once

#include <QImage>
#include <QPaintDevice>
#include <chrono>
#include <memory>

namespace zelkam {

/// A paint device that draws on an image until it has done a sensible amount of work, for drawings
/// that come from anywhere: a hundred bytes of one can ask for hours. What is drawn after that
/// costs nothing and does not appear. One thread at a time.
class DrawingBudget : public QPaintDevice
{
public:
    /// How much may be drawn.
    struct Limits
    {
        /// Of one shape, which cannot be stopped once it is begun: about a nanosecond each, by the
        /// pixels that it fills and those that its outline passes through.
        double shapeWork = 1e9;
        /// Of the processor, for all shapes.
        std::chrono::milliseconds time{700};
    };

    /// The image must outlive the device.
    explicit DrawingBudget(QImage &image) : DrawingBudget(image, Limits()) {}
    DrawingBudget(QImage &image, const Limits &limits);
    ~DrawingBudget() override;

    /// Whether something was left out.
    bool isSpent() const;

    QPaintEngine *paintEngine() const override;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    class Engine;
    QImage &m_image;
    std::unique_ptr<Engine> m_engine;
};

} // namespace zelkam
