#include "host/surfaces/x11/X11Window.hpp"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include <xcb/xcb_icccm.h>

#include "host/surfaces/x11/X11Events.hpp"

namespace nivlo {

namespace {

constexpr int kMinimumLength = 64;

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
      place_{0, 0, options.width, options.height} {}

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
  } else if (kind == XCB_PROPERTY_NOTIFY) {
    const auto& property = as<xcb_property_notify_event_t>(event);
    stateChanged_ = stateChanged_ || property.atom == connection().atom("_NET_WM_STATE");
  }
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
