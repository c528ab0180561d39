#include "host/surfaces/x11/X11Window.hpp"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>

#include <xcb/xcb_icccm.h>

#include "host/surfaces/x11/X11Events.hpp"
#include "host/surfaces/x11/X11Monitors.hpp"

namespace nivlo {

namespace {

constexpr int kMinimumLength = 64;
/// XK_Escape of the X Window System Protocol, appendix A.
constexpr xcb_keysym_t kEscape = 0xff1b;

}  // namespace

std::unique_ptr<Surface> X11Window::open(const SurfaceOptions& options, SurfaceHandlers handlers,
                                         std::string* error) {
  auto connection = X11Connection::open(error);
  return connection
             ? std::unique_ptr<Surface>(new X11Window(std::move(connection), options, std::move(handlers)))
             : nullptr;
}

X11Window::X11Window(std::unique_ptr<X11Connection> connection, const SurfaceOptions& options,
                     SurfaceHandlers handlers)
    : X11Surface(std::move(connection), options.pause, std::move(handlers)),
      place_{0, 0, options.width, options.height} {
  fitWorkArea();
}

/// The part of the first monitor that panels leave free, as far as a window manager tells (EWMH 1.3). Its
/// list has four values for each virtual desktop.
ScreenRect X11Window::workArea() const {
  auto& server = connection();
  const auto area = X11Monitors(server).list().front().place;
  const auto current = server.values(server.root(), "_NET_CURRENT_DESKTOP");
  const auto free = server.values(server.root(), "_NET_WORKAREA");
  const std::size_t first = current.empty() ? 0 : std::size_t{4} * current[0];
  if (first + 4 > free.size()) {
    return area;
  }
  const auto at = [&](std::size_t i) { return static_cast<int>(free[first + i]); };
  const int left = std::max(area.x, at(0));
  const int top = std::max(area.y, at(1));
  const int width = std::min(area.x + area.width, at(0) + at(2)) - left;
  const int height = std::min(area.y + area.height, at(1) + at(3)) - top;
  return width > 0 && height > 0 ? ScreenRect{left, top, width, height} : area;
}

/// Where there is a window manager, it is asked to leave room for the title bar, too.
void X11Window::fitWorkArea() {
  const auto area = workArea();
  fillsWorkArea_ = place_.width >= area.width || place_.height >= area.height;
  place_ = {area.x, area.y, std::min(place_.width, area.width), std::min(place_.height, area.height)};
}

CGSize X11Window::size() const {
  return {static_cast<double>(place_.width), static_cast<double>(place_.height)};
}

void X11Window::openCanvases() {
  auto canvas = std::make_unique<X11Canvas>(connection(), place_, X11Canvas::Kind::Managed);
  xcb_size_hints_t size{};
  xcb_icccm_size_hints_set_size(&size, 0, place_.width, place_.height);
  xcb_icccm_size_hints_set_min_size(&size, kMinimumLength, kMinimumLength);
  xcb_icccm_set_wm_normal_hints(connection().get(), canvas->window(), &size);
  connection().setValues(canvas->window(), "WM_PROTOCOLS", XCB_ATOM_ATOM,
                         {connection().atom("WM_DELETE_WINDOW")});
  if (fillsWorkArea_) {
    connection().setValues(canvas->window(), "_NET_WM_STATE", XCB_ATOM_ATOM,
                           {connection().atom("_NET_WM_STATE_MAXIMIZED_VERT"),
                            connection().atom("_NET_WM_STATE_MAXIMIZED_HORZ")});
  }
  canvas->receiveKeys();
  canvas->map();
  canvases().emplace("window", std::move(canvas));
}

void X11Window::handle(const xcb_generic_event_t& event) {
  const auto kind = typeOf(event);
  if (kind == XCB_CLIENT_MESSAGE) {
    const auto& message = as<xcb_client_message_event_t>(event);
    if (message.data.data32[0] == connection().atom("WM_DELETE_WINDOW")) {
      handlers().closed();
    }
  } else if (kind == XCB_KEY_PRESS) {
    if (isEscape(as<xcb_key_press_event_t>(event).detail)) {
      handlers().closed();
    }
  } else if (kind == XCB_PROPERTY_NOTIFY) {
    const auto& property = as<xcb_property_notify_event_t>(event);
    stateChanged_ = stateChanged_ || property.atom == connection().atom("_NET_WM_STATE");
  }
}

bool X11Window::isEscape(xcb_keycode_t key) const {
  const auto request = xcb_get_keyboard_mapping(connection().get(), key, 1);
  const X11Reply<xcb_get_keyboard_mapping_reply_t> symbols(
      xcb_get_keyboard_mapping_reply(connection().get(), request, nullptr));
  return symbols && symbols->keysyms_per_keycode > 0 &&
         xcb_get_keyboard_mapping_keysyms(symbols.get())[0] == kEscape;
}

/// Under a compositing manager a minimised window may stay mapped, so its state is what counts.
void X11Window::settle() {
  if (!std::exchange(stateChanged_, false)) {
    return;
  }
  const auto states = connection().values(canvases().at("window")->window(), "_NET_WM_STATE");
  minimized_ =
      std::find(states.begin(), states.end(), connection().atom("_NET_WM_STATE_HIDDEN")) != states.end();
}

bool X11Window::isCovered(const X11Canvas& canvas) const {
  return minimized_ || (pause() == PausePolicy::Covered && canvas.isObscured());
}

}  // namespace nivlo
