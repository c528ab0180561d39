#include "host/surfaces/wayland/WaylandLayer.hpp"

#include <utility>

#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

constexpr auto kPlasmaDesktop = "org.kde.plasmashell";

}  // namespace

WaylandLayer::WaylandLayer(DesktopLayer wanted, std::function<void()> changed)
    : changed_(std::move(changed)), isBottom_(wanted == DesktopLayer::Bottom) {
  if (wanted == DesktopLayer::Auto) {
    watch_ = g_bus_watch_name(
        G_BUS_TYPE_SESSION, kPlasmaDesktop, G_BUS_NAME_WATCHER_FLAGS_NONE,
        [](GDBusConnection*, const gchar*, const gchar*, gpointer self) {
          static_cast<WaylandLayer*>(self)->setBottom(true);
        },
        [](GDBusConnection*, const gchar*, gpointer self) {
          static_cast<WaylandLayer*>(self)->setBottom(false);
        },
        this, nullptr);
  }
}

WaylandLayer::~WaylandLayer() {
  if (watch_ != 0) {
    g_bus_unwatch_name(watch_);
  }
}

void WaylandLayer::setBottom(bool isBottom) {
  if (isBottom == std::exchange(isBottom_, isBottom)) {
    return;
  }
  if (isBottom) {
    NSLog(
        "surface: Plasma's desktop would cover the wallpaper, so the wallpaper is shown above it and hides "
        "its "
        "icons; --layer background puts it below. KWin does not tell which windows cover the wallpaper, so "
        "the "
        "camera stays open below them; 'nivlo ctl pause' closes it");
  }
  changed_();
}

}  // namespace nivlo
