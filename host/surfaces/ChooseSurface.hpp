// Picks the surface that suits the session.
#pragma once

#include <memory>
#include <string>

#include "host/surfaces/Surface.hpp"

namespace nivlo {

enum class SurfaceKind {
  Auto,       ///< the desktop background if possible, else a window; offscreen if no display is named
  Wayland,    ///< the desktop background of a Wayland compositor, through its layer shell
  X11,        ///< the desktop background of an X server
  Window,     ///< an ordinary window
  Offscreen,  ///< memory; nothing is shown
};

/// Returns whether the environment names a Wayland or X11 display; it need not answer.
bool hasDisplay();

/// Opens a surface of this kind. Returns null, with the cause and the remedy in `*error`, if that is
/// impossible. Auto logs what kept it from a better surface. It draws offscreen only where the environment
/// names no display, and only if standard input is a terminal or NIVLO_WITHOUT_DISPLAY is set.
std::unique_ptr<Surface> chooseSurface(SurfaceKind kind, const SurfaceOptions& options,
                                       const SurfaceHandlers& handlers, std::string* error);

}  // namespace nivlo
