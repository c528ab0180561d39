#include "host/surfaces/x11/X11Monitors.hpp"

#include <cstddef>
#include <cstdint>
#include <utility>

#include <xcb/randr.h>

#include "host/surfaces/x11/X11Events.hpp"

namespace nivlo {

X11Monitors::X11Monitors(X11Connection& connection) : connection_(connection) {
  constexpr std::uint32_t kMajor = 1;
  constexpr std::uint32_t kMinorWithMonitors = 5;
  const auto* extension = connection.extension(xcb_randr_id);
  if (!extension) {
    return;
  }
  firstEvent_ = extension->first_event;
  const auto request = xcb_randr_query_version(connection.get(), kMajor, kMinorWithMonitors);
  const X11Reply<xcb_randr_query_version_reply_t> version(
      xcb_randr_query_version_reply(connection.get(), request, nullptr));
  known_ = version && version->major_version == kMajor && version->minor_version >= kMinorWithMonitors;
  xcb_randr_select_input(connection.get(), connection.root(),
                         XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                             XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
}

std::vector<X11Monitor> X11Monitors::list() {
  std::vector<X11Monitor> found;
  X11Reply<xcb_randr_get_monitors_reply_t> reply;
  if (known_) {
    const auto request = xcb_randr_get_monitors(connection_.get(), connection_.root(), 1);
    reply.reset(xcb_randr_get_monitors_reply(connection_.get(), request, nullptr));
  }
  if (!reply) {
    const auto& screen = connection_.screen();
    return {{"screen", {0, 0, screen.width_in_pixels, screen.height_in_pixels}}};
  }
  auto monitors = xcb_randr_get_monitors_monitors_iterator(reply.get());
  for (; monitors.rem > 0; xcb_randr_monitor_info_next(&monitors)) {
    const auto& info = *monitors.data;
    X11Monitor monitor{nameOf(info.name), {info.x, info.y, info.width, info.height}};
    found.insert(info.primary != 0 ? found.begin() : found.end(), std::move(monitor));
  }
  return found;
}

/// Monitors that a program defines (xrandr --setmonitor) are announced only by a change of the root window.
bool X11Monitors::isChange(const xcb_generic_event_t& event) const {
  const auto kind = typeOf(event);
  if (kind == XCB_CONFIGURE_NOTIFY) {
    return as<xcb_configure_notify_event_t>(event).window == connection_.root();
  }
  return firstEvent_ != 0 &&
         (kind == firstEvent_ + XCB_RANDR_SCREEN_CHANGE_NOTIFY || kind == firstEvent_ + XCB_RANDR_NOTIFY);
}

std::string X11Monitors::nameOf(xcb_atom_t atom) {
  const auto request = xcb_get_atom_name(connection_.get(), atom);
  const X11Reply<xcb_get_atom_name_reply_t> reply(
      xcb_get_atom_name_reply(connection_.get(), request, nullptr));
  if (!reply) {
    return {};
  }
  return {xcb_get_atom_name_name(reply.get()),
          static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

}  // namespace nivlo
