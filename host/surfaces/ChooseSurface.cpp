#include "host/surfaces/ChooseSurface.hpp"

#include <cstdlib>
#include <initializer_list>
#include <utility>

#include "host/surfaces/OffscreenSurface.hpp"
#include "host/surfaces/wayland/WaylandDesktop.hpp"
#include "host/surfaces/wayland/WaylandWindow.hpp"
#include "host/surfaces/x11/X11Desktop.hpp"
#include "host/surfaces/x11/X11Window.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

using Open = std::unique_ptr<Surface> (*)(const SurfaceOptions&, SurfaceHandlers, std::string*);

bool isSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value && *value;
}

/// Returns the first surface that opens and logs why those before it did not.
std::unique_ptr<Surface> firstOf(std::initializer_list<Open> openers, const SurfaceOptions& options,
                                 const SurfaceHandlers& handlers) {
  for (const auto open : openers) {
    std::string cause;
    if (auto surface = open(options, handlers, &cause)) {
      return surface;
    }
    NSLog("surface: %@", cause);
  }
  return nullptr;
}

std::unique_ptr<Surface> automatic(const SurfaceOptions& options, const SurfaceHandlers& handlers) {
  std::unique_ptr<Surface> surface;
  if (isSet("WAYLAND_DISPLAY")) {
    surface = firstOf({WaylandDesktop::open, WaylandWindow::open}, options, handlers);
  }
  if (!surface && isSet("DISPLAY")) {
    surface = firstOf({X11Desktop::open, X11Window::open}, options, handlers);
  }
  return surface ? std::move(surface) : std::make_unique<OffscreenSurface>(options, handlers);
}

}  // namespace

bool hasDisplay() { return isSet("WAYLAND_DISPLAY") || isSet("DISPLAY"); }

std::unique_ptr<Surface> chooseSurface(SurfaceKind kind, const SurfaceOptions& options,
                                       const SurfaceHandlers& handlers, std::string* error) {
  switch (kind) {
    case SurfaceKind::Wayland:
      return WaylandDesktop::open(options, handlers, error);
    case SurfaceKind::X11:
      return X11Desktop::open(options, handlers, error);
    case SurfaceKind::Window:
      return isSet("WAYLAND_DISPLAY") ? WaylandWindow::open(options, handlers, error)
                                      : X11Window::open(options, handlers, error);
    case SurfaceKind::Offscreen:
      return std::make_unique<OffscreenSurface>(options, handlers);
    case SurfaceKind::Auto:
      break;
  }
  return automatic(options, handlers);
}

}  // namespace nivlo
