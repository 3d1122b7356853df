#pragma once

namespace zelkam {

class UIApplication;
class UIViewController;

/// The top-most view controller that the person sees, from the key window's root through
/// containers and presentations; null when there is no key window or it has no root.
/// Main thread.
UIViewController *visibleViewController(const UIApplication &application);

} // namespace zelkam
