#pragma once

#include <QSize>
#include <cstdint>
#include <vector>

namespace zelkam {

/// One plane of a decoded picture, as its decoder holds it.
struct SamplePlane
{
    const uint8_t *bytes = nullptr; ///< samples of more than 8 bits take two bytes, low byte first
    int stride = 0;                 ///< bytes from row to row
    QSize size;
    int bits = 8;
};

/// Reads a plane at its own or a smaller size, row by row: the mean of the covered samples. Scaling
/// planes touches a picture's samples once and holds no second picture.
class PlaneScaler
{
public:
    PlaneScaler(const SamplePlane &plane, QSize target);

    /// One row of the target, samples from 0 to 255. Valid until the next call.
    const std::vector<float> &row(int y);

private:
    void addRow(int sourceRow, float weight);

    SamplePlane m_plane;
    QSize m_target;
    std::vector<int> m_first;         ///< a target column's first source column, and one more
    std::vector<float> m_firstWeight; ///< the part of it that is covered
    std::vector<float> m_sums;        ///< of the rows that make a target row, by source column
    std::vector<float> m_row;
};

} // namespace zelkam
