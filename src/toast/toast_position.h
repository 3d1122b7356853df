#pragma once

namespace zelkam {

/// Where a bubble comes up in its host: half-way across, and at the upper edge, in the middle or
/// at the lower edge. It keeps `ToastManager::shared().style.verticalPadding` and the host's
/// safe-area inset away from the edge.
///
/// The insets are a dynamic property of the host, "safeAreaInsets", that holds a QMargins in
/// points. Any application can set it; without it they are zero. Left and right are not used.
enum class ToastPosition { top, center, bottom };

} // namespace zelkam
