#include "host/surfaces/x11/X11WindowManager.hpp"

#include <algorithm>
#include <cstdint>
#include <string>

#include "host/surfaces/x11/X11Events.hpp"

namespace nivlo {

namespace {

constexpr auto kCheck = "_NET_SUPPORTING_WM_CHECK";
constexpr auto kSupported = "_NET_SUPPORTED";

}  // namespace

/// A window manager that was killed leaves its properties on the root window, but the window that they name
/// is gone.
void X11WindowManager::query() {
  const auto named = connection_.values(connection_.root(), kCheck);
  const bool alive = !named.empty() && connection_.values(named[0], kCheck) == named;
  check_ = alive ? named[0] : XCB_NONE;
  knowsDesktopWindows_ = false;
  isMutter_ = false;
  if (!alive) {
    return;
  }
  const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_.get(), check_, XCB_CW_EVENT_MASK, &mask);
  const auto supported = connection_.values(connection_.root(), kSupported);
  knowsDesktopWindows_ = std::find(supported.begin(), supported.end(),
                                   connection_.atom("_NET_WM_WINDOW_TYPE_DESKTOP")) != supported.end();
  const auto name = connection_.text(check_, "_NET_WM_NAME");  // for example "Mutter (Muffin)"
  isMutter_ = name.find("Mutter") != std::string::npos || name == "GNOME Shell";
}

bool X11WindowManager::handle(const xcb_generic_event_t& event) {
  const auto kind = typeOf(event);
  bool changed = false;
  if (kind == XCB_PROPERTY_NOTIFY) {
    const auto& property = as<xcb_property_notify_event_t>(event);
    changed = property.window == connection_.root() &&
              (property.atom == connection_.atom(kCheck) || property.atom == connection_.atom(kSupported));
  } else if (kind == XCB_DESTROY_NOTIFY) {
    changed = as<xcb_destroy_notify_event_t>(event).window == check_;
  }
  if (changed) {
    query();
  }
  return changed;
}

}  // namespace nivlo
