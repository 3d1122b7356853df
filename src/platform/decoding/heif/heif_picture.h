#pragma once

#include "platform/decoding/heif/heif_coding.h"

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <libheif/heif.h>
#include <memory>
#include <optional>

namespace zelkam {

template<auto release>
struct HeifRelease
{
    template<typename T>
    void operator()(T *handle) const
    {
        release(handle);
    }
};
using HeifContext = std::unique_ptr<heif_context, HeifRelease<heif_context_free>>;
using HeifImageHandle = std::unique_ptr<heif_image_handle, HeifRelease<heif_image_handle_release>>;
using HeifImage = std::unique_ptr<heif_image, HeifRelease<heif_image_release>>;

/// The primary image of a HEIF file.
class HeifPicture
{
public:
    /// Opens a file that is held in memory. Nothing for what is no HEIF file.
    static std::optional<HeifPicture> open(const QByteArray &file);

    QSize size() const; ///< upright

    /// The smaller version that a camera stored beside the image, when there is one of the
    /// same shape that is at least of this size.
    std::optional<HeifPicture> thumbnail(QSize atLeast) const;

    /// Decodes, turned upright, at the given size. The image is RGB32, or ARGB32 (premultiplied
    /// where the file is), with its colour space. Null when the coded picture is corrupt or cut
    /// short. One picture at a time in the whole process.
    QImage decode(QSize target) const;

private:
    HeifPicture(QByteArray file, HeifImageHandle handle, HeifCoding coding);

    QByteArray m_file; ///< libheif reads from it for as long as there is a handle
    HeifImageHandle m_handle;
    HeifCoding m_coding;
};

} // namespace zelkam
