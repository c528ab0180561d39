#include "host/surfaces/x11/X11Canvas.hpp"

#include <array>
#include <chrono>
#include <cstdint>
#include <string>

#include "host/surfaces/x11/X11Events.hpp"

namespace nivlo {

namespace {

constexpr std::chrono::milliseconds kMapRetryDelay{500};
constexpr std::uint32_t kEvents = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                  XCB_EVENT_MASK_VISIBILITY_CHANGE | XCB_EVENT_MASK_PROPERTY_CHANGE;

}  // namespace

/// With no background of its own, the window keeps what it shows until that is drawn over, so that it does
/// not flash black where other windows move across it.
X11Canvas::X11Canvas(X11Connection& connection, const ScreenRect& place, Kind kind)
    : connection_(connection),
      kind_(kind),
      place_(place),
      width_(place.width),
      height_(place.height),
      window_(xcb_generate_id(connection.get())),
      context_(xcb_generate_id(connection.get())) {
  const std::array<std::uint32_t, 3> values{XCB_BACK_PIXMAP_NONE, kind != Kind::Managed, kEvents};
  xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, window_, connection.root(),
                    static_cast<std::int16_t>(place.x), static_cast<std::int16_t>(place.y),
                    static_cast<std::uint16_t>(place.width), static_cast<std::uint16_t>(place.height), 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, connection.screen().root_visual,
                    XCB_CW_BACK_PIXMAP | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
  xcb_create_gc(connection.get(), context_, window_, 0, nullptr);
  setNames();
}

X11Canvas::~X11Canvas() {
  xcb_free_gc(connection_.get(), context_);
  xcb_destroy_window(connection_.get(), window_);
}

void X11Canvas::receiveKeys() {
  const std::uint32_t events = kEvents | XCB_EVENT_MASK_KEY_PRESS;
  xcb_change_window_attributes(connection_.get(), window_, XCB_CW_EVENT_MASK, &events);
}

void X11Canvas::setNames() {
  connection_.setText(window_, "WM_NAME", "STRING", "Nivlo");
  connection_.setText(window_, "_NET_WM_NAME", "UTF8_STRING", "Nivlo");
  connection_.setText(window_, "WM_CLASS", "STRING", std::string("nivlo\0Nivlo\0", 12));
}

void X11Canvas::map() {
  if (kind_ == Kind::Lowest) {
    lower();
  }
  xcb_map_window(connection_.get(), window_);
  connection_.flush();
  mapping_ = EventSource::onTimeout(kMapRetryDelay, [this] { map(); });
}

void X11Canvas::move(const ScreenRect& place) {
  place_ = place;
  const std::array<std::uint32_t, 4> values{
      static_cast<std::uint32_t>(place.x), static_cast<std::uint32_t>(place.y),
      static_cast<std::uint32_t>(place.width), static_cast<std::uint32_t>(place.height)};
  xcb_configure_window(
      connection_.get(), window_,
      XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
      values.data());
}

void X11Canvas::lower() {
  const std::uint32_t below = XCB_STACK_MODE_BELOW;
  xcb_configure_window(connection_.get(), window_, XCB_CONFIG_WINDOW_STACK_MODE, &below);
}

bool X11Canvas::draw(LayerRenderer& renderer, const LaidOutView& view) {
  if (!isReady()) {
    return false;
  }
  if (!picture_ || picture_->pixels().width != width_ || picture_->pixels().height != height_) {
    picture_ = std::make_unique<X11Picture>(connection_, width_, height_);
  }
  stale_ = false;
  const bool drawn = renderer.render(view, picture_->pixels());
  picture_->put(window_, context_);
  return drawn;
}

void X11Canvas::handle(const xcb_generic_event_t& event) {
  if (picture_) {
    picture_->handle(event);
  }
  switch (typeOf(event)) {
    case XCB_EXPOSE:
      stale_ = stale_ || as<xcb_expose_event_t>(event).window == window_;
      break;
    case XCB_VISIBILITY_NOTIFY:
      if (const auto& change = as<xcb_visibility_notify_event_t>(event); change.window == window_) {
        obscured_ = change.state == XCB_VISIBILITY_FULLY_OBSCURED;
      }
      break;
    case XCB_MAP_NOTIFY:
      if (as<xcb_map_notify_event_t>(event).window == window_) {
        mapped_ = true;
        mapping_ = EventSource();
      }
      break;
    case XCB_UNMAP_NOTIFY:
      mapped_ = mapped_ && as<xcb_unmap_notify_event_t>(event).window != window_;
      break;
    case XCB_CONFIGURE_NOTIFY:
      configured(as<xcb_configure_notify_event_t>(event));
      break;
    default:
      break;
  }
}

void X11Canvas::configured(const xcb_configure_notify_event_t& event) {
  if (event.window != window_) {
    return;
  }
  width_ = event.width;
  height_ = event.height;
  if (kind_ == Kind::Lowest && event.above_sibling != XCB_NONE) {
    lower();
  }
}

}  // namespace nivlo
