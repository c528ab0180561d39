// Follows the desktop's preference for dark or light.
#pragma once

#include <functional>
#include <memory>

namespace nivlo {

/// Follows the desktop's colour scheme for as long as it exists.
///
/// It asks the desktop portal for org.freedesktop.appearance color-scheme, of which only the value 1 (prefer
/// dark) means dark. A portal is never started for this; one that starts later is asked then. A portal or a
/// bus that goes away changes nothing until it is back and says something else. Nothing is ever logged: a
/// desktop that does not tell is a light one.
class ColorScheme {
 public:
  virtual ~ColorScheme() = default;
};

/// `changed` is called as soon as the scheme is known, and then each time that it turns from dark to light or
/// back; never where there is no portal, or none that knows the setting. Never null. Main thread only, as is
/// the destruction, which must not happen within the handler. Returns at once: the handler is called from the
/// main thread's GLib loop.
std::unique_ptr<ColorScheme> makeColorScheme(std::function<void(bool dark)> changed);

}  // namespace nivlo
