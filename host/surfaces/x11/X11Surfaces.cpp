#include "host/surfaces/x11/X11Surfaces.hpp"

#include <utility>

#include "host/surfaces/x11/X11Desktop.hpp"
#include "host/surfaces/x11/X11Window.hpp"

namespace nivlo {

std::unique_ptr<Surface> openX11Desktop(const SurfaceOptions& options, SurfaceHandlers handlers,
                                        std::string* error) {
  auto connection = X11Connection::open(error);
  return connection ? X11Desktop::open(std::move(connection), options, std::move(handlers), error) : nullptr;
}

std::unique_ptr<Surface> openX11Window(const SurfaceOptions& options, SurfaceHandlers handlers,
                                       std::string* error) {
  auto connection = X11Connection::open(error);
  return connection ? std::make_unique<X11Window>(std::move(connection), options, std::move(handlers))
                    : nullptr;
}

}  // namespace nivlo
