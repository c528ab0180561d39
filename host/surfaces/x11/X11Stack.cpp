#include "host/surfaces/x11/X11Stack.hpp"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <iterator>
#include <utility>

#include "host/surfaces/x11/X11Events.hpp"

namespace nivlo {

namespace {

constexpr std::chrono::milliseconds kRest{100};

}  // namespace

void X11Stack::set(std::vector<xcb_window_t> windows, std::vector<xcb_window_t> desktops) {
  if (windows == windows_ && desktops == desktops_) {
    return;
  }
  windows_ = std::move(windows);
  desktops_ = std::move(desktops);
  check();
}

/// Only these events change the order of windows that exist: a new window is the highest one.
void X11Stack::handle(const xcb_generic_event_t& event) {
  const auto kind = typeOf(event);
  stale_ =
      stale_ || kind == XCB_CONFIGURE_NOTIFY || kind == XCB_CIRCULATE_NOTIFY || kind == XCB_REPARENT_NOTIFY;
}

void X11Stack::settle() {
  if (!resting_ && std::exchange(stale_, false)) {
    check();
  }
}

/// The windows may be in any order among themselves.
void X11Stack::check() {
  if (windows_.empty() || desktops_.empty()) {
    return;
  }
  const auto request = xcb_query_tree(connection_.get(), connection_.root());
  const X11Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(connection_.get(), request, nullptr));
  if (!tree) {
    return;
  }
  const auto* lowest = xcb_query_tree_children(tree.get());
  const auto* end = lowest + xcb_query_tree_children_length(tree.get());
  const auto above = std::find_first_of(std::make_reverse_iterator(end), std::make_reverse_iterator(lowest),
                                        desktops_.begin(), desktops_.end())
                         .base();
  if (above == lowest) {
    return;  // the desktops have just gone
  }
  if (end - above >= std::ssize(windows_) && std::is_permutation(windows_.begin(), windows_.end(), above)) {
    return;
  }
  for (const auto window : windows_) {
    const std::array<std::uint32_t, 2> values{*std::prev(above), XCB_STACK_MODE_ABOVE};
    xcb_configure_window(connection_.get(), window, XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE,
                         values.data());
  }
  connection_.flush();
  resting_ = true;
  rest_ = EventSource::onTimeout(kRest, [this] {
    resting_ = false;
    connection_.dispatch();
  });
}

}  // namespace nivlo
