// Surfaces on an X server.
#pragma once

#include <memory>
#include <string>

#include "host/surfaces/Surface.hpp"

namespace nivlo {

/// The desktop background, or an ordinary window that can be resized and closed. Null, with the cause and the
/// remedy in `*error`, where there is no display that can show it.
std::unique_ptr<Surface> openX11Desktop(const SurfaceOptions& options, SurfaceHandlers handlers,
                                        std::string* error);
std::unique_ptr<Surface> openX11Window(const SurfaceOptions& options, SurfaceHandlers handlers,
                                       std::string* error);

}  // namespace nivlo
