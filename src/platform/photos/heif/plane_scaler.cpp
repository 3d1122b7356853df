#include "platform/photos/heif/plane_scaler.h"

#include <algorithm>
#include <cmath>

namespace zelkam {

PlaneScaler::PlaneScaler(const SamplePlane &plane, QSize target)
    : m_plane(plane),
      m_target(target),
      m_copies(target.width() >= plane.size.width()),
      m_row(size_t(target.width()))
{
    const int width = plane.size.width();
    const double step = double(width) / target.width();
    m_first.reserve(size_t(target.width()) + 1);
    for (int x = 0; x <= target.width(); ++x) {
        const double left = x * step;
        const int first = std::min(int(left), width - 1);
        m_first.push_back(first);
        if (m_copies)
            continue;
        m_firstWeight.push_back(float(1.0 - (left - first)));
        m_lastWeight.push_back(float(left - first));
    }
    if (!m_copies) {
        // The last target column ends with the last source column as a whole.
        m_first.back() = width - 1;
        m_lastWeight.back() = 1.0F;
    }
}

template<typename Sample>
void PlaneScaler::addRow(const Sample *samples, float weight)
{
    const auto width = size_t(m_target.width());
    if (m_copies) {
        for (size_t x = 0; x < width; ++x)
            m_row[x] += weight * float(samples[m_first[x]]);
        return;
    }
    for (size_t x = 0; x < width; ++x) {
        const int first = m_first[x];
        const int last = m_first[x + 1];
        uint32_t whole = 0;
        for (int i = first + 1; i < last; ++i)
            whole += samples[i];
        m_row[x] += weight * (m_firstWeight[x] * float(samples[first]) + float(whole) +
                              m_lastWeight[x + 1] * float(samples[last]));
    }
}

void PlaneScaler::addRow(int sourceRow, float weight)
{
    const uint8_t *bytes = m_plane.bytes + ptrdiff_t(sourceRow) * m_plane.stride;
    if (m_plane.bits > 8)
        addRow(reinterpret_cast<const uint16_t *>(bytes), weight);
    else
        addRow(bytes, weight);
}

const std::vector<float> &PlaneScaler::row(int y)
{
    std::fill(m_row.begin(), m_row.end(), 0.0F);
    const int height = m_plane.size.height();
    const double columns = m_copies ? 1.0 : double(m_plane.size.width()) / m_target.width();
    const double range = std::ldexp(1.0, m_plane.bits) - 1;
    const double step = double(height) / m_target.height();
    const double scale = 255.0 / range / columns;
    const double top = y * step;
    if (step <= 1.0) {
        addRow(std::min(int(top), height - 1), float(scale));
        return m_row;
    }
    const double bottom = std::min<double>(top + step, height);
    for (int source = int(top); source < bottom; ++source) {
        const double covered = std::min<double>(bottom, source + 1) - std::max<double>(top, source);
        addRow(source, float(covered / step * scale));
    }
    return m_row;
}

} // namespace zelkam
