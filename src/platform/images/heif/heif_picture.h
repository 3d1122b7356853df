#pragma once

#include "platform/images/heif/heif_structure.h"

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

/// The primary image of a HEIF file. What decoding it will take is known, and checked by whoever
/// decodes, before a decoder sees it.
class HeifPicture
{
public:
    /// Opens a file that is held in memory. Nothing for what is no HEIF file or has no image
    /// that HeifStructure knows the cost of.
    static std::optional<HeifPicture> open(const QByteArray &file);

    QSize size() const; ///< upright
    bool hasAlpha() const;
    const HeifStructure::Cost &cost() const { return m_cost; }

    /// The smaller version that a camera stored beside the image, when there is one of the
    /// same shape that is at least of this size.
    std::optional<HeifPicture> thumbnail(QSize atLeast) const;

    /// Decodes, turned upright, at the given size; an empty one is the picture's own. The image
    /// is RGB32, or ARGB32 (premultiplied where the file is), with its colour space. Null when
    /// the coded picture is corrupt or cut short.
    QImage decode(QSize target) const;

private:
    HeifPicture(QByteArray file, HeifStructure structure, HeifImageHandle handle,
                HeifStructure::Cost cost);

    QByteArray m_file; ///< libheif reads from it for as long as there is a handle
    HeifStructure m_structure;
    HeifImageHandle m_handle;
    HeifStructure::Cost m_cost;
};

} // namespace zelkam
