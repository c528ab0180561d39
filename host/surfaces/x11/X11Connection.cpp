#include "host/surfaces/x11/X11Connection.hpp"

#include <utility>

namespace nivlo {

namespace {

bool has32BitPixels(const xcb_setup_t& setup, std::uint8_t depth) {
  auto formats = xcb_setup_pixmap_formats_iterator(&setup);
  for (; formats.rem > 0; xcb_format_next(&formats)) {
    if (formats.data->depth == depth) {
      return formats.data->bits_per_pixel == 32 && setup.image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    }
  }
  return false;
}

bool isBlueFirst(const xcb_screen_t& screen) {
  constexpr std::uint32_t kRed = 0xff0000;
  constexpr std::uint32_t kBlue = 0xff;
  for (auto depths = xcb_screen_allowed_depths_iterator(&screen); depths.rem > 0; xcb_depth_next(&depths)) {
    auto visuals = xcb_depth_visuals_iterator(depths.data);
    for (; visuals.rem > 0; xcb_visualtype_next(&visuals)) {
      if (visuals.data->visual_id == screen.root_visual) {
        return visuals.data->red_mask == kRed && visuals.data->blue_mask == kBlue;
      }
    }
  }
  return false;
}

const xcb_screen_t* screenOf(const xcb_setup_t& setup, int number) {
  auto screens = xcb_setup_roots_iterator(&setup);
  for (; number > 0 && screens.rem > 1; --number) {
    xcb_screen_next(&screens);
  }
  return screens.data;
}

}  // namespace

std::unique_ptr<X11Connection> X11Connection::open(std::string* error) {
  int number = 0;
  Handle connection(xcb_connect(nullptr, &number));
  if (xcb_connection_has_error(connection.get()) != 0) {
    *error = "cannot connect to an X11 display; check DISPLAY, or use --surface offscreen";
    return nullptr;
  }
  const auto* setup = xcb_get_setup(connection.get());
  const auto* screen = screenOf(*setup, number);
  if (!has32BitPixels(*setup, screen->root_depth) || !isBlueFirst(*screen)) {
    *error = "the X11 display does not take 24-bit colours in 32-bit pixels; use --surface offscreen";
    return nullptr;
  }
  return std::unique_ptr<X11Connection>(new X11Connection(std::move(connection), screen));
}

void X11Connection::listen(Listener listener) {
  listener_ = std::move(listener);
  events_ = EventSource::onReadable(xcb_get_file_descriptor(get()), [this] { dispatch(); });
}

void X11Connection::dispatch() {
  if (!listener_.lost) {
    return;
  }
  X11Reply<xcb_generic_event_t> event(xcb_poll_for_event(get()));
  do {
    for (; event; event.reset(xcb_poll_for_event(get()))) {
      listener_.event(*event);
    }
    listener_.settled();
    // Replies that the listener waited for may have brought more events.
    event.reset(xcb_poll_for_queued_event(get()));
  } while (event);
  if (xcb_connection_has_error(get()) != 0) {
    events_ = EventSource();
    std::exchange(listener_.lost, nullptr)();
  }
}

xcb_atom_t X11Connection::atom(const std::string& name) {
  const auto known = atoms_.find(name);
  if (known != atoms_.end()) {
    return known->second;
  }
  const auto request = xcb_intern_atom(get(), 0, static_cast<std::uint16_t>(name.size()), name.c_str());
  const X11Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(get(), request, nullptr));
  return reply ? atoms_[name] = reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

X11Reply<xcb_get_property_reply_t> X11Connection::property(xcb_window_t window, const std::string& name) {
  constexpr std::uint32_t kMostValues = 4096;
  const auto request =
      xcb_get_property(get(), 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, kMostValues);
  return X11Reply<xcb_get_property_reply_t>(xcb_get_property_reply(get(), request, nullptr));
}

std::string X11Connection::text(xcb_window_t window, const std::string& property) {
  const auto reply = this->property(window, property);
  if (!reply || reply->format != 8) {
    return {};
  }
  return {static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len};
}

std::vector<std::uint32_t> X11Connection::values(xcb_window_t window, const std::string& property) {
  const auto reply = this->property(window, property);
  if (!reply || reply->format != 32) {
    return {};
  }
  const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
  return {first, first + reply->value_len};
}

void X11Connection::setValues(xcb_window_t window, const std::string& property, xcb_atom_t type,
                              const std::vector<std::uint32_t>& values) {
  xcb_change_property(get(), XCB_PROP_MODE_REPLACE, window, atom(property), type, 32,
                      static_cast<std::uint32_t>(values.size()), values.data());
}

void X11Connection::setText(xcb_window_t window, const std::string& property, const std::string& type,
                            const std::string& text) {
  xcb_change_property(get(), XCB_PROP_MODE_REPLACE, window, atom(property), atom(type), 8,
                      static_cast<std::uint32_t>(text.size()), text.data());
}

const xcb_query_extension_reply_t* X11Connection::extension(xcb_extension_t& extension) const {
  const auto* data = xcb_get_extension_data(get(), &extension);
  return data && data->present != 0 ? data : nullptr;
}

bool X11Connection::owns(xcb_window_t window) const {
  const auto* setup = xcb_get_setup(get());
  return (window & ~setup->resource_id_mask) == setup->resource_id_base;
}

}  // namespace nivlo
