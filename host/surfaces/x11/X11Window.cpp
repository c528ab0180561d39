#include "host/surfaces/x11/X11Window.hpp"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include <xcb/xcb_icccm.h>

namespace nivlo {

namespace {

template <typename Reply>
using Answer = Owned<Reply, std::free>;

/// Whether pixels of 32 bits, blue first, can be sent as they are.
bool takesPixels(const xcb_setup_t& setup, const xcb_screen_t& screen) {
  auto formats = xcb_setup_pixmap_formats_iterator(&setup);
  for (; formats.rem > 0; xcb_format_next(&formats)) {
    if (formats.data->depth == screen.root_depth) {
      return screen.root_depth >= 24 && formats.data->bits_per_pixel == 32 &&
             setup.image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    }
  }
  return false;
}

}  // namespace

std::unique_ptr<X11Window> X11Window::open(const SurfaceOptions& options, SurfaceHandlers handlers,
                                           std::string* error) {
  Connection connection(xcb_connect(nullptr, nullptr));
  if (xcb_connection_has_error(connection.get()) != 0) {
    *error = "there is no X11 display to open a window on; set DISPLAY, or use --surface offscreen";
    return nullptr;
  }
  const auto* setup = xcb_get_setup(connection.get());
  const auto* screen = xcb_setup_roots_iterator(setup).data;
  if (!takesPixels(*setup, *screen)) {
    *error = "the X11 display has no 24-bit colour; use --surface offscreen";
    return nullptr;
  }
  return std::unique_ptr<X11Window>(
      new X11Window(std::move(connection), *screen, options, std::move(handlers)));
}

X11Window::X11Window(Connection connection, const xcb_screen_t& screen, const SurfaceOptions& options,
                     SurfaceHandlers handlers)
    : handlers_(std::move(handlers)), connection_(std::move(connection)), depth_(screen.root_depth) {
  pixels_.resize(options.width, options.height);
  createWindow(screen, options.width, options.height);
  events_ = EventSource::onReadable(xcb_get_file_descriptor(connection_.get()), [this] { handleEvents(); });
}

CGSize X11Window::size() const {
  return {static_cast<double>(pixels_.width), static_cast<double>(pixels_.height)};
}

void X11Window::show(LaidOutView view) {
  view_ = std::move(view);
  clock_.emplace(*view_.view, [this] {
    if (renderer_.render(view_, pixels_.view())) {
      present();
      handlers_.drawn();
    }
  });
}

void X11Window::createWindow(const xcb_screen_t& screen, int width, int height) {
  auto* display = connection_.get();
  window_ = xcb_generate_id(display);
  context_ = xcb_generate_id(display);
  const std::array<std::uint32_t, 2> values{screen.black_pixel, XCB_EVENT_MASK_EXPOSURE};
  xcb_create_window(display, XCB_COPY_FROM_PARENT, window_, screen.root, 0, 0,
                    static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height), 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, screen.root_visual, XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK,
                    values.data());
  xcb_create_gc(display, context_, window_, 0, nullptr);
  setText(XCB_ATOM_WM_NAME, "Nivlo");
  setText(XCB_ATOM_WM_CLASS, std::string("nivlo\0Nivlo\0", 12));
  xcb_size_hints_t hints{};
  xcb_icccm_size_hints_set_min_size(&hints, width, height);
  xcb_icccm_size_hints_set_max_size(&hints, width, height);
  xcb_icccm_set_wm_normal_hints(display, window_, &hints);
  deleteWindow_ = atom("WM_DELETE_WINDOW");
  xcb_icccm_set_wm_protocols(display, window_, atom("WM_PROTOCOLS"), 1, &deleteWindow_);
  xcb_map_window(display, window_);
  xcb_flush(display);
}

void X11Window::setText(xcb_atom_t property, const std::string& text) {
  xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window_, property, XCB_ATOM_STRING, 8,
                      static_cast<std::uint32_t>(text.size()), text.data());
}

xcb_atom_t X11Window::atom(const std::string& name) {
  const auto request =
      xcb_intern_atom(connection_.get(), 0, static_cast<std::uint16_t>(name.size()), name.c_str());
  const Answer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_.get(), request, nullptr));
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void X11Window::handleEvents() {
  while (const Answer<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
    const auto kind = event->response_type & 0x7f;
    if (kind == XCB_EXPOSE) {
      present();
    } else if (kind == XCB_CLIENT_MESSAGE) {
      const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
      if (message.data.data32[0] == deleteWindow_) {
        handlers_.closed();
      }
    }
  }
  if (xcb_connection_has_error(connection_.get()) != 0) {
    events_ = EventSource();
    handlers_.lost("the X11 display is gone");
  }
}

/// In strips, as a request is limited in length.
void X11Window::present() {
  constexpr std::uint32_t kHeaderBytes = 64;
  const auto limit = xcb_get_maximum_request_length(connection_.get()) * 4 - kHeaderBytes;
  const int rows = std::max(1, static_cast<int>(limit / static_cast<std::uint32_t>(pixels_.stride())));
  for (int row = 0; row < pixels_.height; row += rows) {
    put(row, std::min(rows, pixels_.height - row));
  }
  xcb_flush(connection_.get());
}

void X11Window::put(int firstRow, int rows) {
  xcb_put_image(connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window_, context_,
                static_cast<std::uint16_t>(pixels_.width), static_cast<std::uint16_t>(rows), 0,
                static_cast<std::int16_t>(firstRow), 0, depth_,
                static_cast<std::uint32_t>(rows * pixels_.stride()),
                pixels_.data.data() + static_cast<std::ptrdiff_t>(firstRow) * pixels_.stride());
}

}  // namespace nivlo
