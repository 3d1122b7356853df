#include "platform/decoding/heif/plane_scaler.h"

#include <algorithm>
#include <cmath>

namespace zelkam {

namespace {

/// Along the rows, so that the compiler can use the processor's vectors.
template<typename Sample>
void accumulate(const Sample *samples, float weight, std::vector<float> &sums)
{
    const size_t width = sums.size();
    for (size_t x = 0; x < width; ++x)
        sums[x] += weight * float(samples[x]);
}

} // namespace

PlaneScaler::PlaneScaler(const SamplePlane &plane, QSize target)
    : m_plane(plane),
      m_target(target),
      m_sums(size_t(plane.size.width())),
      m_row(size_t(target.width()))
{
    const int width = plane.size.width();
    const double step = double(width) / target.width();
    for (int x = 0; x <= target.width(); ++x) {
        const double left = x * step;
        const int first = std::min(int(left), width - 1);
        m_first.push_back(first);
        m_firstWeight.push_back(float(1.0 - (left - first)));
    }
    // The last column ends with the end of the plane: the sample there counts as a whole, and once.
    m_firstWeight.back() = step > 1.0 ? 0.0F : 1.0F;
}

void PlaneScaler::addRow(int sourceRow, float weight)
{
    const uint8_t *bytes = m_plane.bytes + ptrdiff_t(sourceRow) * m_plane.stride;
    if (m_plane.bits > 8)
        accumulate(reinterpret_cast<const uint16_t *>(bytes), weight, m_sums);
    else
        accumulate(bytes, weight, m_sums);
}

const std::vector<float> &PlaneScaler::row(int y)
{
    std::fill(m_sums.begin(), m_sums.end(), 0.0F);
    const double range = std::ldexp(1.0, m_plane.bits) - 1;
    const double scale = 255.0 / range * m_target.width() / m_plane.size.width();
    const int height = m_plane.size.height();
    const double step = double(height) / m_target.height();
    const double top = y * step;
    const double bottom = std::min<double>(top + step, height);
    for (int source = int(top); source < bottom; ++source) {
        const double covered = std::min<double>(bottom, source + 1) - std::max<double>(top, source);
        addRow(source, float(covered / step * scale));
    }

    for (size_t x = 0; x < m_row.size(); ++x) {
        const auto first = size_t(m_first[x]);
        const auto last = size_t(m_first[x + 1]);
        float sum = m_firstWeight[x] * m_sums[first] + (1.0F - m_firstWeight[x + 1]) * m_sums[last];
        for (size_t i = first + 1; i < last; ++i)
            sum += m_sums[i];
        m_row[x] = sum;
    }
    return m_row;
}

} // namespace zelkam
