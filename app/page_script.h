#pragma once

#include <QWebEngineScript>

namespace zelkam {

/// The script that gives a page window.ZelkamMobile: for the main frame only, before any script
/// of the page, in the page's own world.
QWebEngineScript pageScript();

} // namespace zelkam
