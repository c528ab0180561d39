#include "host/surfaces/x11/X11Clients.hpp"

#include <algorithm>
#include <cstddef>
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
constexpr auto kType = "_NET_WM_WINDOW_TYPE";
constexpr auto kFrame = "_NET_FRAME_EXTENTS";
constexpr auto kShadow = "_GTK_FRAME_EXTENTS";

std::uint32_t firstValue(const std::vector<std::uint32_t>& values, std::uint32_t otherwise) {
  return values.empty() ? otherwise : values[0];
}

}  // namespace

/// For a window inside a frame, the window manager reports moves of the frame with events that it sends.
void X11Clients::handle(const xcb_generic_event_t& event) {
  const auto noteMove = [this](xcb_window_t window, bool stale) {
    const auto client = clients_.find(window);
    if (client != clients_.end()) {
      client->second.moved = true;
      client->second.stale = client->second.stale || stale;
    }
  };
  switch (typeOf(event)) {
    case XCB_PROPERTY_NOTIFY:
      propertyChanged(as<xcb_property_notify_event_t>(event));
      break;
    case XCB_CONFIGURE_NOTIFY:
      noteMove(as<xcb_configure_notify_event_t>(event).window, false);
      break;
    case XCB_MAP_NOTIFY:
      noteMove(as<xcb_map_notify_event_t>(event).window, false);
      break;
    case XCB_UNMAP_NOTIFY:
      noteMove(as<xcb_unmap_notify_event_t>(event).window, false);
      break;
    case XCB_REPARENT_NOTIFY:
      noteMove(as<xcb_reparent_notify_event_t>(event).window, true);
      break;
    default:
      break;
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
  if (changed != clients_.end() && (is(kState) || is(kDesktop) || is(kType) || is(kFrame) || is(kShadow))) {
    changed->second.stale = true;
  }
}

bool X11Clients::update() {
  bool changed = listStale_ || desktopStale_;
  if (std::exchange(listStale_, false)) {
    readList();
  }
  if (std::exchange(desktopStale_, false)) {
    readDesktop();
  }
  for (auto& [window, client] : clients_) {
    changed = changed || client.stale || client.moved;
    if (std::exchange(client.stale, false)) {
      read(window, client);
    }
    if (std::exchange(client.moved, false)) {
      readPlace(window, client);
    }
  }
  return changed;
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

void X11Clients::read(xcb_window_t window, Client& client) {
  const auto states = connection_.values(window, kState);
  const auto has = [this](const std::vector<std::uint32_t>& values, const char* name) {
    return std::find(values.begin(), values.end(), connection_.atom(name)) != values.end();
  };
  client.fullscreen = has(states, "_NET_WM_STATE_FULLSCREEN");
  client.maximized =
      has(states, "_NET_WM_STATE_MAXIMIZED_VERT") && has(states, "_NET_WM_STATE_MAXIMIZED_HORZ");
  client.minimized = has(states, "_NET_WM_STATE_HIDDEN") || has(states, "_NET_WM_STATE_SHADED");
  client.desktop = firstValue(connection_.values(window, kDesktop), kEveryX11Desktop);
  client.isDesktop = has(connection_.values(window, kType), "_NET_WM_WINDOW_TYPE_DESKTOP");
  client.top = client.isDesktop ? topOf(window) : xcb_window_t{XCB_NONE};
  client.margins = marginsOf(window);
  client.moved = true;
}

X11Clients::Margins X11Clients::marginsOf(xcb_window_t window) {
  constexpr std::uint32_t kWidest = 1000;
  Margins margins{};
  const auto add = [&](const char* property, int sign) {
    const auto values = connection_.values(window, property);
    for (std::size_t i = 0; values.size() == margins.size() && i < margins.size(); ++i) {
      margins[i] += sign * static_cast<int>(std::min(values[i], kWidest));
    }
  };
  add(kFrame, 1);
  add(kShadow, -1);
  return margins;
}

xcb_window_t X11Clients::topOf(xcb_window_t window) {
  for (;;) {
    const auto request = xcb_query_tree(connection_.get(), window);
    const X11Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(connection_.get(), request, nullptr));
    if (!tree || tree->parent == connection_.root() || tree->parent == XCB_NONE) {
      return tree ? window : xcb_window_t{XCB_NONE};
    }
    window = tree->parent;
  }
}

void X11Clients::readPlace(xcb_window_t window, Client& client) {
  auto* server = connection_.get();
  const auto stateRequest = xcb_get_window_attributes(server, window);
  const auto sizeRequest = xcb_get_geometry(server, window);
  const auto placeRequest = xcb_translate_coordinates(server, window, connection_.root(), 0, 0);
  const X11Reply<xcb_get_window_attributes_reply_t> state(
      xcb_get_window_attributes_reply(server, stateRequest, nullptr));
  const X11Reply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(server, sizeRequest, nullptr));
  const X11Reply<xcb_translate_coordinates_reply_t> place(
      xcb_translate_coordinates_reply(server, placeRequest, nullptr));
  client.mapped = state && size && place && state->map_state != XCB_MAP_STATE_UNMAPPED;
  if (client.mapped) {
    const auto& [left, right, top, bottom] = client.margins;
    client.place = {place->dst_x - left, place->dst_y - top, size->width + left + right,
                    size->height + top + bottom};
  }
}

bool X11Clients::hides(const Client& client) const {
  const bool isHere = client.desktop == kEveryX11Desktop || client.desktop == currentDesktop_;
  return isHere && !showingDesktop_ && client.mapped && !client.minimized && !client.isDesktop;
}

bool X11Clients::cover(const ScreenRect& area, PausePolicy policy) const {
  if (policy == PausePolicy::Never) {
    return false;
  }
  std::vector<ScreenRect> places;
  for (const auto& [window, client] : clients_) {
    if (!hides(client)) {
      continue;
    }
    const bool fills = client.fullscreen || (client.maximized && policy == PausePolicy::Covered);
    if (fills && coversMost(client.place, area)) {
      return true;
    }
    places.push_back(client.place);
  }
  return policy == PausePolicy::Covered && hideNearlyAll(places, area);
}

std::vector<xcb_window_t> X11Clients::desktopsUnder(const std::vector<ScreenRect>& areas) const {
  std::vector<xcb_window_t> found;
  for (const auto& entry : clients_) {
    const Client& client = entry.second;
    const bool fills = std::any_of(areas.begin(), areas.end(),
                                   [&client](const auto& area) { return coversMost(client.place, area); });
    if (client.isDesktop && client.mapped && fills && client.top != XCB_NONE) {
      found.push_back(client.top);
    }
  }
  return found;
}

}  // namespace nivlo
