// Opens links with the default applications of the desktop.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/drivers/URLOpener.hpp"

namespace nivlo {

/// Told about links that do not open, on the main thread, with a sentence for the user that names at most the
/// link's scheme. Both must be set.
struct LinkHandlers {
  std::function<void(const std::string& explanation)> refused;  ///< called by canOpenURL before it answers
  std::function<void(const std::string& explanation)> failed;   ///< the program did not start
};

/// Makes an opener that starts the default application for a link's scheme. A code that somebody stuck on a
/// wall must not run scripts or reach into the machine, so these schemes are never opened, whichever program
/// claims them: about, admin, blob, data, file, javascript, vbscript, view-source, and the desktop's own
/// computer, network, recent, resource and trash. Nor are links that are too long to be a program's argument.
/// A host beyond ASCII is passed on in its "xn--" form, everything else byte for byte. Never null.
std::unique_ptr<URLOpener> makeDesktopURLOpener(LinkHandlers handlers);

}  // namespace nivlo
