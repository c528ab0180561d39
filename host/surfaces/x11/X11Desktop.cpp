#include "host/surfaces/x11/X11Desktop.hpp"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include <xcb/shape.h>
#include <xcb/xcb_icccm.h>

#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

/// Some compositing managers take a window that bypasses the window manager and covers the screen for a game
/// and show nothing else; this value of _NET_WM_BYPASS_COMPOSITOR (EWMH 1.5) asks them not to.
constexpr std::uint32_t kNeverBypass = 2;

/// Monitors that mirror each other share one window.
bool contain(const std::vector<X11Monitor>& monitors, const ScreenRect& place) {
  return std::any_of(monitors.begin(), monitors.end(),
                     [&](const auto& monitor) { return monitor.place == place; });
}

}  // namespace

std::unique_ptr<Surface> X11Desktop::open(const SurfaceOptions& options, SurfaceHandlers handlers,
                                          std::string* error) {
  auto connection = X11Connection::open(error);
  if (!connection) {
    return nullptr;
  }
  return std::unique_ptr<Surface>(new X11Desktop(std::move(connection), options, std::move(handlers)));
}

X11Desktop::X11Desktop(std::unique_ptr<X11Connection> connection, const SurfaceOptions& options,
                       SurfaceHandlers handlers)
    : X11Surface(std::move(connection), options.pause, std::move(handlers)),
      output_(options.output),
      windowManager_(this->connection()),
      clients_(this->connection()),
      allMonitors_(this->connection()),
      awaited_(options.output),
      stack_(this->connection()) {
  receiveRootEvents();
  findMonitors();
}

/// While all monitors are off, the wallpaper is laid out for the whole screen and waits for one to come on.
CGSize X11Desktop::size() const {
  const auto& screen = connection().screen();
  const auto place = monitors_.empty() ? ScreenRect{0, 0, screen.width_in_pixels, screen.height_in_pixels}
                                       : monitors_[0].place;
  return {static_cast<double>(place.width), static_cast<double>(place.height)};
}

void X11Desktop::findMonitors() {
  monitors_.clear();
  std::vector<std::string> names;
  for (auto& monitor : allMonitors_.list()) {
    names.push_back(monitor.name);
    if ((output_.empty() || monitor.name == output_) && !contain(monitors_, monitor.place)) {
      monitors_.push_back(std::move(monitor));
    }
  }
  awaited_.update(!monitors_.empty(), names);
}

/// Changes below the root window are many and matter only while a place among them is to be kept.
void X11Desktop::receiveRootEvents() {
  const std::uint32_t always = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  const std::uint32_t mask = desktopsBelow_.empty() ? always : always | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection().get(), connection().root(), XCB_CW_EVENT_MASK, &mask);
}

void X11Desktop::openCanvases() { arrange(true); }

void X11Desktop::handle(const xcb_generic_event_t& event) {
  windowManagerChanged_ = windowManager_.handle(event) || windowManagerChanged_;
  monitorsChanged_ = allMonitors_.isChange(event) || monitorsChanged_;
  clients_.handle(event);
  stack_.handle(event);
}

void X11Desktop::settle() {
  if (std::exchange(windowManagerChanged_, false)) {
    canvases().clear();
    clients_.forget();
    monitorsChanged_ = true;
  }
  const bool monitorsChanged = std::exchange(monitorsChanged_, false);
  if (monitorsChanged) {
    findMonitors();
    handlers().awaits(awaited());
  }
  arrange(monitorsChanged);
  stack_.settle();
}

void X11Desktop::arrange(bool monitorsChanged) {
  const bool clientsChanged = windowManager_.isRunning() && clients_.update();
  if (monitorsChanged || clientsChanged) {
    if (findDesktopsBelow() || monitorsChanged) {
      placeCanvases();
    }
    findCovered();
  }
}

/// Returns whether they have changed.
bool X11Desktop::findDesktopsBelow() {
  std::vector<ScreenRect> places;
  for (const auto& monitor : monitors_) {
    places.push_back(monitor.place);
  }
  auto found = clients_.desktopsUnder(places);
  if (found == desktopsBelow_) {
    return false;
  }
  if (found.empty() != desktopsBelow_.empty()) {
    canvases().clear();
  }
  desktopsBelow_ = std::move(found);
  receiveRootEvents();
  if (!desktopsBelow_.empty() && !std::exchange(toldOfIcons_, true)) {
    NSLog(
        "surface: another program draws the desktop too; the wallpaper hides its icons while it is shown, "
        "but clicks still reach it, so that its menus work");
  }
  return true;
}

/// A new window is mapped only in its place, where it cannot hide others for a moment.
void X11Desktop::placeCanvases() {
  Canvases placed;
  std::vector<xcb_window_t> windows;
  std::vector<X11Canvas*> made;
  for (const auto& monitor : monitors_) {
    auto& canvas = canvases()[monitor.name];
    if (canvas) {
      canvas->move(monitor.place);
    } else {
      canvas = makeCanvas(monitor.place);
      made.push_back(canvas.get());
    }
    windows.push_back(canvas->window());
    placed[monitor.name] = std::move(canvas);
  }
  canvases() = std::move(placed);
  stack_.set(kindOfCanvas() == X11Canvas::Kind::Stacked ? std::move(windows) : std::vector<xcb_window_t>(),
             desktopsBelow_);
  for (auto* canvas : made) {
    canvas->map();
  }
}

X11Canvas::Kind X11Desktop::kindOfCanvas() const {
  if (windowManager_.isMutter()) {
    return X11Canvas::Kind::Managed;
  }
  if (!desktopsBelow_.empty()) {
    return X11Canvas::Kind::Stacked;
  }
  return windowManager_.knowsDesktopWindows() ? X11Canvas::Kind::Managed : X11Canvas::Kind::Lowest;
}

std::unique_ptr<X11Canvas> X11Desktop::makeCanvas(const ScreenRect& place) {
  auto canvas = std::make_unique<X11Canvas>(connection(), place, kindOfCanvas());
  setHints(canvas->window(), place);
  if (connection().extension(xcb_shape_id)) {
    xcb_shape_rectangles(connection().get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                         canvas->window(), 0, 0, 0, nullptr);
  }
  return canvas;
}

void X11Desktop::findCovered() {
  covered_.clear();
  for (const auto& [name, canvas] : canvases()) {
    if (clients_.cover(canvas->place(), pause())) {
      covered_.insert(canvas->window());
    }
  }
}

/// Mutter and its relatives keep a dock with the state "below" above all desktop windows and below all
/// others. It does not keep Cinnamon's desktop, nemo-desktop, from starting, as another desktop window would.
void X11Desktop::setHints(xcb_window_t window, const ScreenRect& place) {
  auto& server = connection();
  const auto* type = windowManager_.isMutter() ? "_NET_WM_WINDOW_TYPE_DOCK" : "_NET_WM_WINDOW_TYPE_DESKTOP";
  server.setValues(window, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, {server.atom(type)});
  server.setValues(window, "_NET_WM_STATE", XCB_ATOM_ATOM,
                   {server.atom("_NET_WM_STATE_STICKY"), server.atom("_NET_WM_STATE_BELOW"),
                    server.atom("_NET_WM_STATE_SKIP_TASKBAR"), server.atom("_NET_WM_STATE_SKIP_PAGER")});
  server.setValues(window, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL, {kEveryX11Desktop});
  server.setValues(window, "_NET_WM_BYPASS_COMPOSITOR", XCB_ATOM_CARDINAL, {kNeverBypass});
  xcb_icccm_wm_hints_t hints{};
  xcb_icccm_wm_hints_set_input(&hints, 0);
  xcb_icccm_set_wm_hints(server.get(), window, &hints);
  xcb_size_hints_t size{};
  xcb_icccm_size_hints_set_position(&size, 1, place.x, place.y);
  xcb_icccm_size_hints_set_size(&size, 1, place.width, place.height);
  xcb_icccm_set_wm_normal_hints(server.get(), window, &size);
}

bool X11Desktop::isCovered(const X11Canvas& canvas) const {
  const bool obscured = pause() == PausePolicy::Covered && canvas.isObscured();
  return obscured || covered_.contains(canvas.window());
}

}  // namespace nivlo
