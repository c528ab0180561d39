// Picks the surface that fits where the program runs.
#pragma once

#include <memory>
#include <string>

#include "host/surfaces/Surface.hpp"

namespace nivlo {

enum class SurfaceKind {
  Auto,       ///< the desktop where there is one, else a window, else offscreen
  Wayland,    ///< the desktop background, by layer-shell
  X11,        ///< the desktop background of an X server
  Window,     ///< an ordinary window
  Offscreen,  ///< memory
};

/// Whether there is a Wayland or X11 display to be tried.
bool hasDisplay();

/// Null, with the cause and the remedy in `*error`, where there is no such surface. With Auto there always is
/// one; what is missing for a better one is said in the log.
std::unique_ptr<Surface> chooseSurface(SurfaceKind kind, const SurfaceOptions& options,
                                       const SurfaceHandlers& handlers, std::string* error);

}  // namespace nivlo
