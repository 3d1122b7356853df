#pragma once

#include "toast/toast_style.h"

#include <QImage>
#include <QString>
#include <QWidget>

#include <memory>
#include <optional>

namespace zelkam {

enum class ToastError {
    /// Neither message nor title nor image was given.
    missingParameters,
};

/// A toast view, or the reason why there is none.
struct ToastViewResult
{
    std::unique_ptr<QWidget> view;
    std::optional<ToastError> error;

    explicit operator bool() const { return view != nullptr; }
};

/// Builds the bubble for a host of the present size, to be shown with showToast().
///
/// The image, when it is not null, stands left of the texts in a rectangle of `style.imageSize`.
/// Each label is as large as its text needs in the share of the host that the style allows; the
/// message is cut to that share, the title is not. The height of the bubble goes by message and
/// image: a title alone hangs over its lower edge. An empty text is a text, of no size.
ToastViewResult toastViewForMessage(QWidget *host, const std::optional<QString> &message,
                                    const std::optional<QString> &title,
                                    const std::optional<QImage> &image, const ToastStyle &style);

} // namespace zelkam
