// Surfaces on a Wayland compositor.
#pragma once

#include <memory>
#include <string>

#include "host/surfaces/Surface.hpp"

namespace nivlo {

/// The desktop background on every output (or the one that is named), by layer-shell; or an ordinary window
/// that can be resized and closed. Null, with the cause and the remedy in `*error`, where the compositor
/// cannot be reached or lacks what it takes.
std::unique_ptr<Surface> openWaylandDesktop(const SurfaceOptions& options, SurfaceHandlers handlers,
                                            std::string* error);
std::unique_ptr<Surface> openWaylandWindow(const SurfaceOptions& options, SurfaceHandlers handlers,
                                           std::string* error);

}  // namespace nivlo
