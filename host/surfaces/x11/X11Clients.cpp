#include "host/surfaces/x11/X11Clients.hpp"

#include <algorithm>
#include <utility>
#include <vector>

#include "host/surfaces/x11/X11Events.hpp"

namespace nivlo {

namespace {

constexpr auto kList = "_NET_CLIENT_LIST";
constexpr auto kCurrentDesktop = "_NET_CURRENT_DESKTOP";
constexpr auto kShowingDesktop = "_NET_SHOWING_DESKTOP";
constexpr auto kDesktop = "_NET_WM_DESKTOP";
constexpr auto kState = "_NET_WM_STATE";

std::uint32_t firstValue(const std::vector<std::uint32_t>& values, std::uint32_t otherwise) {
  return values.empty() ? otherwise : values[0];
}

}  // namespace

void X11Clients::handle(const xcb_generic_event_t& event) {
  const auto kind = typeOf(event);
  if (kind == XCB_PROPERTY_NOTIFY) {
    propertyChanged(as<xcb_property_notify_event_t>(event));
  } else if (kind == XCB_CONFIGURE_NOTIFY) {
    const auto moved = clients_.find(as<xcb_configure_notify_event_t>(event).window);
    if (moved != clients_.end() && moved->second.covers()) {
      moved->second.stale = true;
    }
  }
}

void X11Clients::propertyChanged(const xcb_property_notify_event_t& event) {
  const auto is = [&](const char* name) { return event.atom == connection_.atom(name); };
  if (event.window == connection_.root()) {
    listStale_ = listStale_ || is(kList);
    desktopStale_ = desktopStale_ || is(kCurrentDesktop) || is(kShowingDesktop);
    return;
  }
  const auto changed = clients_.find(event.window);
  if (changed != clients_.end() && (is(kState) || is(kDesktop))) {
    changed->second.stale = true;
  }
}

void X11Clients::update() {
  if (std::exchange(listStale_, false)) {
    readList();
  }
  if (std::exchange(desktopStale_, false)) {
    readDesktop();
  }
  for (auto& [window, client] : clients_) {
    if (std::exchange(client.stale, false)) {
      read(window, client);
    }
  }
}

void X11Clients::forget() {
  clients_.clear();
  listStale_ = true;
  desktopStale_ = true;
}

void X11Clients::readList() {
  std::map<xcb_window_t, Client> listed;
  for (const auto window : connection_.values(connection_.root(), kList)) {
    if (connection_.owns(window)) {
      continue;
    }
    const auto known = clients_.find(window);
    if (known != clients_.end()) {
      listed.insert(*known);
      continue;
    }
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_.get(), window, XCB_CW_EVENT_MASK, &mask);
    listed.emplace(window, Client());
  }
  clients_ = std::move(listed);
}

void X11Clients::readDesktop() {
  currentDesktop_ = firstValue(connection_.values(connection_.root(), kCurrentDesktop), 0);
  showingDesktop_ = firstValue(connection_.values(connection_.root(), kShowingDesktop), 0) != 0;
}

/// The place is queried only if the window can cover anything, which spares two round trips for most windows.
void X11Clients::read(xcb_window_t window, Client& client) {
  const auto states = connection_.values(window, kState);
  const auto has = [&](const char* state) {
    return std::find(states.begin(), states.end(), connection_.atom(state)) != states.end();
  };
  client.fullscreen = has("_NET_WM_STATE_FULLSCREEN");
  client.maximized = has("_NET_WM_STATE_MAXIMIZED_VERT") && has("_NET_WM_STATE_MAXIMIZED_HORZ");
  client.minimized = has("_NET_WM_STATE_HIDDEN");
  client.desktop = firstValue(connection_.values(window, kDesktop), kEveryX11Desktop);
  if (!client.covers()) {
    return;
  }
  auto* server = connection_.get();
  const auto sizeRequest = xcb_get_geometry(server, window);
  const auto placeRequest = xcb_translate_coordinates(server, window, connection_.root(), 0, 0);
  const X11Reply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(server, sizeRequest, nullptr));
  const X11Reply<xcb_translate_coordinates_reply_t> place(
      xcb_translate_coordinates_reply(server, placeRequest, nullptr));
  client.place = size && place ? X11Rect{place->dst_x, place->dst_y, size->width, size->height} : X11Rect();
}

bool X11Clients::isHere(const Client& client) const {
  return !showingDesktop_ && (client.desktop == kEveryX11Desktop || client.desktop == currentDesktop_);
}

bool X11Clients::cover(const X11Rect& area, PausePolicy policy) const {
  return policy != PausePolicy::Never && std::any_of(clients_.begin(), clients_.end(), [&](const auto& item) {
           const auto& client = item.second;
           const bool counts = client.fullscreen || policy == PausePolicy::Covered;
           return counts && client.covers() && isHere(client) && coversMost(client.place, area);
         });
}

}  // namespace nivlo
