#pragma once

#include <QtGlobal>

namespace zelkam {

/// A share of the memory that images may take at the same time in the whole process: several
/// threads decode, and their largest images must not add up. A thread has one share at a time; one
/// that is made while the thread has another belongs to that. So whoever goes on to work with an
/// image opens a share before it is decoded and closes it when the image is gone.
///
/// Any thread. A share ends on the thread that it was made on.
class ImageMemoryShare
{
public:
    ImageMemoryShare();
    ~ImageMemoryShare();
    Q_DISABLE_COPY_MOVE(ImageMemoryShare)

    /// Waits until so much is free beside the shares of others; what is more than all waits until
    /// it is alone. In exchange for what the share had before.
    void reserve(qint64 bytes);

private:
    void giveBack();

    ImageMemoryShare *m_outer;
    qint64 m_bytes = 0;
};

} // namespace zelkam
