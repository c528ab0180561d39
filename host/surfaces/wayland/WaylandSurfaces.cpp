#include "host/surfaces/wayland/WaylandSurfaces.hpp"
namespace nivlo {
std::unique_ptr<Surface> openWaylandDesktop(const SurfaceOptions&, SurfaceHandlers, std::string* error) {
  *error = "this build draws on X11 only";
  return nullptr;
}
std::unique_ptr<Surface> openWaylandWindow(const SurfaceOptions&, SurfaceHandlers, std::string* error) {
  *error = "this build draws on X11 only";
  return nullptr;
}
}  // namespace nivlo
