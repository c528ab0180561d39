// Other programs' windows and their places.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/surfaces/ScreenRect.hpp"

namespace nivlo {

/// The kind of window that covers an output's wallpaper.
enum class Cover {
  Unknown,     ///< the compositor does not tell
  Nothing,     ///< no window at all
  Windows,     ///< windows that leave some of it free
  Maximized,   ///< a maximised window, or windows that leave next to nothing free
  Fullscreen,  ///< a fullscreen window
};

/// A window that can be seen unless others lie above it.
struct PlacedWindow {
  ScreenRect place;  ///< with its title bar and border
  bool fullscreen = false;
};

/// A desktop as its compositor describes it, in logical pixels.
struct DesktopWindows {
  std::map<std::string, ScreenRect> outputs;  ///< by their names
  std::vector<PlacedWindow> windows;          ///< on all outputs; those of hidden workspaces are left out

  /// Unknown for an output that is not described.
  Cover coverOf(const std::string& output) const;
};

}  // namespace nivlo
