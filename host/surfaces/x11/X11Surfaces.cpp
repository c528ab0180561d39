#include "host/surfaces/x11/X11Surfaces.hpp"

#include <utility>

#include "host/surfaces/x11/X11Window.hpp"

namespace nivlo {

std::unique_ptr<Surface> openX11Desktop(const SurfaceOptions& options, SurfaceHandlers handlers,
                                        std::string* error) {
  return openX11Window(options, std::move(handlers), error);
}

std::unique_ptr<Surface> openX11Window(const SurfaceOptions& options, SurfaceHandlers handlers,
                                       std::string* error) {
  return X11Window::open(options, std::move(handlers), error);
}

}  // namespace nivlo
