#include "host/surfaces/wayland/WaylandSurfaces.hpp"

#include <utility>

#include "host/surfaces/wayland/WaylandDesktop.hpp"
#include "host/surfaces/wayland/WaylandWindow.hpp"

namespace nivlo {

std::unique_ptr<Surface> openWaylandDesktop(const SurfaceOptions& options, SurfaceHandlers handlers,
                                            std::string* error) {
  return WaylandDesktop::open(options, std::move(handlers), error);
}

std::unique_ptr<Surface> openWaylandWindow(const SurfaceOptions& options, SurfaceHandlers handlers,
                                           std::string* error) {
  return WaylandWindow::open(options, std::move(handlers), error);
}

}  // namespace nivlo
