#include "tests/support/desktop/PrivateDisplay.hpp"

#include <cstdlib>
#include <utility>

#include <fmt/format.h>
#include <xcb/xcb_icccm.h>

#include "tests/support/WaitFor.hpp"

namespace nivlo::test {

namespace {

template <typename Reply>
using X11Reply = Owned<Reply, std::free>;

}  // namespace

PrivateDisplay::PrivateDisplay(const std::vector<std::string>& arguments) {
  std::vector<std::string> command{"Xvfb", "-displayfd", "1", "-noreset", "-screen", "0", "800x600x24"};
  command.insert(command.end(), arguments.begin(), arguments.end());
  server_.emplace(std::move(command));
  server_->expectReady([&] { return server_->standardOutput().ends_with('\n'); });
  name_ = fmt::format(":{}", std::stoi(server_->standardOutput()));
  client_.reset(xcb_connect(name_.c_str(), nullptr));
}

xcb_atom_t PrivateDisplay::atom(const std::string& name) const {
  const auto request = xcb_intern_atom(client(), 0, static_cast<std::uint16_t>(name.size()), name.c_str());
  const X11Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(client(), request, nullptr));
  return reply->atom;
}

void PrivateDisplay::split() const {
  run({"xrandr", "--setmonitor", "left", "400/100x600/100+0+0", "screen"});
  run({"xrandr", "--setmonitor", "right", "400/100x600/100+400+0", "none"});
}

bool PrivateDisplay::shows(Picture::Color color, int x, int y) const {
  return waitFor([&] {
    const auto request = xcb_get_image(client(), XCB_IMAGE_FORMAT_Z_PIXMAP, root(),
                                       static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 1, 1, ~0U);
    const X11Reply<xcb_get_image_reply_t> image(xcb_get_image_reply(client(), request, nullptr));
    const auto* pixel = image ? xcb_get_image_data(image.get()) : nullptr;
    return pixel && isNear({pixel[2], pixel[1], pixel[0]}, color);
  });
}

xcb_window_t PrivateDisplay::windowAt(int x, int y) const {
  xcb_warp_pointer(client(), XCB_NONE, root(), 0, 0, 0, 0, static_cast<std::int16_t>(x),
                   static_cast<std::int16_t>(y));
  const X11Reply<xcb_query_pointer_reply_t> reply(
      xcb_query_pointer_reply(client(), xcb_query_pointer(client(), root()), nullptr));
  return reply ? reply->child : ~xcb_window_t{XCB_NONE};
}

std::vector<xcb_window_t> PrivateDisplay::stack() const {
  const X11Reply<xcb_query_tree_reply_t> tree(
      xcb_query_tree_reply(client(), xcb_query_tree(client(), root()), nullptr));
  const auto* first = xcb_query_tree_children(tree.get());
  return {first, first + xcb_query_tree_children_length(tree.get())};
}

xcb_window_t PrivateDisplay::topOf(xcb_window_t window) const {
  for (;;) {
    const X11Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(client(), xcb_query_tree(client(), window), nullptr));
    if (!tree || tree->parent == root()) {
      return tree ? window : xcb_window_t{XCB_NONE};
    }
    window = tree->parent;
  }
}

xcb_rectangle_t PrivateDisplay::placeOf(xcb_window_t window) const {
  const X11Reply<xcb_get_geometry_reply_t> place(
      xcb_get_geometry_reply(client(), xcb_get_geometry(client(), window), nullptr));
  return place ? xcb_rectangle_t{place->x, place->y, place->width, place->height} : xcb_rectangle_t{};
}

std::string PrivateDisplay::titleOf(xcb_window_t window) const {
  const auto request =
      xcb_get_property(client(), 0, window, XCB_ATOM_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY, 0, 64);
  const X11Reply<xcb_get_property_reply_t> title(xcb_get_property_reply(client(), request, nullptr));
  if (title && xcb_get_property_value_length(title.get()) > 0) {
    return {static_cast<const char*>(xcb_get_property_value(title.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(title.get()))};
  }
  return {};
}

ForeignX11Window::ForeignX11Window(const PrivateDisplay& display, const Look& look)
    : client_(display.client()), window_(xcb_generate_id(client_)) {
  const std::uint32_t color = look.color[0] << 16 | look.color[1] << 8 | look.color[2];
  const std::uint32_t values[] = {color, XCB_EVENT_MASK_BUTTON_PRESS};
  xcb_create_window(client_, XCB_COPY_FROM_PARENT, window_, display.root(), look.x, look.y, look.width,
                    look.height, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                    XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
  xcb_size_hints_t hints{};
  xcb_icccm_size_hints_set_position(&hints, 1, look.x, look.y);
  xcb_icccm_set_wm_normal_hints(client_, window_, &hints);
  const auto append = [&](const char* property, const std::string& name) {
    const auto value = display.atom(name);
    xcb_change_property(client_, XCB_PROP_MODE_APPEND, window_, display.atom(property), XCB_ATOM_ATOM, 32, 1,
                        &value);
  };
  for (const auto& state : look.states) {
    append("_NET_WM_STATE", state);
  }
  if (!look.type.empty()) {
    append("_NET_WM_WINDOW_TYPE", look.type);
  }
  xcb_map_window(client_, window_);
  xcb_flush(client_);
}

ForeignX11Window::~ForeignX11Window() {
  xcb_destroy_window(client_, window_);
  xcb_flush(client_);
}

bool ForeignX11Window::isClicked() const {
  return waitFor([&] {
    for (;;) {
      const X11Reply<xcb_generic_event_t> event(xcb_poll_for_event(client_));
      if (!event) {
        return false;
      }
      const auto* press = reinterpret_cast<const xcb_button_press_event_t*>(event.get());
      if (event->response_type == XCB_BUTTON_PRESS && press->event == window_) {
        return true;
      }
    }
  });
}

}  // namespace nivlo::test
