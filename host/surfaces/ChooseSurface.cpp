#include "host/surfaces/ChooseSurface.hpp"

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <unistd.h>

#include "host/surfaces/OffscreenSurface.hpp"
#include "host/surfaces/wayland/WaylandConnection.hpp"
#include "host/surfaces/wayland/WaylandDesktop.hpp"
#include "host/surfaces/wayland/WaylandWindow.hpp"
#include "host/surfaces/x11/X11Connection.hpp"
#include "host/surfaces/x11/X11Desktop.hpp"
#include "host/surfaces/x11/X11Window.hpp"
#include "host/surfaces/x11/X11WindowManager.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

using Open = std::unique_ptr<Surface> (*)(const SurfaceOptions&, SurfaceHandlers, std::string*);

constexpr auto kWaylandDisplay = "WAYLAND_DISPLAY";
constexpr auto kX11Display = "DISPLAY";
/// Set by ./run, which shows what the program does wherever it is started.
constexpr auto kWithoutDisplay = "NIVLO_WITHOUT_DISPLAY";

bool isSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value && *value;
}

/// Opens surfaces until one works.
class Attempts {
 public:
  Attempts(const SurfaceOptions& options, const SurfaceHandlers& handlers)
      : options_(options), handlers_(handlers) {}

  /// Does nothing once a surface is open.
  void attempt(Open open) {
    std::string cause;
    if (!surface_ && !(surface_ = open(options_, handlers_, &cause)) &&
        std::find(causes_.begin(), causes_.end(), cause) == causes_.end()) {
      causes_.push_back(std::move(cause));
    }
  }

  /// Returns the surface, and logs what kept it from a better one; or null, with all causes in `*error`.
  std::unique_ptr<Surface> finish(std::string* error) {
    if (!surface_) {
      *error = fmt::format("{}", fmt::join(causes_, "; and "));
      return nullptr;
    }
    for (const auto& cause : causes_) {
      NSLog("surface: %@", cause);
    }
    return std::move(surface_);
  }

 private:
  const SurfaceOptions& options_;
  const SurfaceHandlers& handlers_;
  std::unique_ptr<Surface> surface_;
  std::vector<std::string> causes_;
};

/// Returns whether the window manager of the X11 display keeps a desktop window below all others. On a
/// Wayland session that is the compositor itself, in its part for X11 programs (XWayland).
bool hasDesktopWindows() {
  std::string error;
  const auto connection = X11Connection::open(&error);
  return connection && X11WindowManager(*connection).knowsDesktopWindows();
}

std::unique_ptr<Surface> openXWaylandDesktop(const SurfaceOptions& options, SurfaceHandlers handlers,
                                             std::string* error) {
  if (!WaylandConnection::open(error)) {
    return nullptr;  // then the X11 display belongs to another session
  }
  if (!hasDesktopWindows()) {
    *error = "XWayland's window manager does not know desktop windows either";
    return nullptr;
  }
  auto desktop = X11Desktop::open(options, std::move(handlers), error);
  if (desktop) {
    NSLog(
        "surface: XWayland does not tell which Wayland windows cover the wallpaper, so the camera closes "
        "only "
        "when X11 windows cover it, when the session is locked, asleep or idle, or with 'nivlo ctl pause'; "
        "GNOME gives clicks on the wallpaper to nobody, so that the desktop's menu does not open");
  }
  return desktop;
}

/// A display that is named but does not answer may have just ended, or not be there yet. Drawing into memory
/// instead would keep the camera on for nobody, and the desktop from starting the program again.
std::unique_ptr<Surface> onDisplay(const SurfaceOptions& options, const SurfaceHandlers& handlers,
                                   std::string* error) {
  Attempts attempts(options, handlers);
  if (isSet(kWaylandDisplay)) {
    attempts.attempt(WaylandDesktop::open);
    if (isSet(kX11Display)) {
      attempts.attempt(openXWaylandDesktop);
    }
    attempts.attempt(WaylandWindow::open);
  }
  if (isSet(kX11Display)) {
    attempts.attempt(X11Desktop::open);
    attempts.attempt(X11Window::open);
  }
  return attempts.finish(error);
}

/// Somebody at a terminal without a display wants to see the program work. A program that the desktop starts
/// has no terminal; without a display it was started too early.
std::unique_ptr<Surface> withoutDisplay(const SurfaceOptions& options, const SurfaceHandlers& handlers,
                                        std::string* error) {
  if (isatty(STDIN_FILENO) == 0 && !isSet(kWithoutDisplay)) {
    *error =
        "there is no display: neither WAYLAND_DISPLAY nor DISPLAY is set; start Nivlo from a desktop "
        "session, "
        "or use --surface offscreen to draw into memory";
    return nullptr;
  }
  return std::make_unique<OffscreenSurface>(options, handlers);
}

}  // namespace

bool hasDisplay() { return isSet(kWaylandDisplay) || isSet(kX11Display); }

std::unique_ptr<Surface> chooseSurface(SurfaceKind kind, const SurfaceOptions& options,
                                       const SurfaceHandlers& handlers, std::string* error) {
  switch (kind) {
    case SurfaceKind::Wayland:
      return WaylandDesktop::open(options, handlers, error);
    case SurfaceKind::X11:
      return X11Desktop::open(options, handlers, error);
    case SurfaceKind::Window:
      return isSet(kWaylandDisplay) ? WaylandWindow::open(options, handlers, error)
                                    : X11Window::open(options, handlers, error);
    case SurfaceKind::Offscreen:
      return std::make_unique<OffscreenSurface>(options, handlers);
    case SurfaceKind::Auto:
      break;
  }
  return hasDisplay() ? onDisplay(options, handlers, error) : withoutDisplay(options, handlers, error);
}

}  // namespace nivlo
