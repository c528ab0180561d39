// Opens links with the default applications of the desktop.
#pragma once

#include <memory>

#include "platform/drivers/URLOpener.hpp"

namespace nivlo {

/// Makes an opener that starts the default application for a link's scheme. A code that somebody stuck on a
/// wall must not run scripts or reach into the machine, so these schemes are never opened, whichever program
/// claims them: about, admin, blob, data, file, javascript, vbscript, view-source, and the desktop's own
/// computer, network, recent, resource and trash. Nor are links that are too long to be a program's argument.
/// Never null.
std::unique_ptr<URLOpener> makeDesktopURLOpener();

}  // namespace nivlo
