// An ordinary window on a Wayland compositor.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/surfaces/Surface.hpp"
#include "host/surfaces/wayland/WaylandPainter.hpp"

namespace nivlo {

/// Takes the size that the compositor gives it, or the one in the options if it leaves the choice and the
/// screen is larger. The Escape key closes it, as not every compositor gives it a title bar. Main thread
/// only.
class WaylandWindow : public Surface {
 public:
  /// Returns null, with the cause and the remedy in `*error`, if the compositor cannot be reached or shows no
  /// windows.
  static std::unique_ptr<Surface> open(const SurfaceOptions& options, SurfaceHandlers handlers,
                                       std::string* error);
  ~WaylandWindow() override;

  std::string name() const override { return "a Wayland window"; }
  CGSize size() const override {
    return {static_cast<double>(options_.width), static_cast<double>(options_.height)};
  }
  void show(LaidOutView view) override;

 private:
  static const xdg_surface_listener kSurfaceListener;
  static const xdg_toplevel_listener kToplevelListener;

  WaylandWindow(std::unique_ptr<WaylandConnection> connection, const SurfaceOptions& options,
                SurfaceHandlers handlers);
  void fitScreen();
  void configured(std::uint32_t serial);

  SurfaceOptions options_;
  SurfaceHandlers handlers_;
  std::unique_ptr<WaylandConnection> connection_;
  WaylandPainter painter_;
  WaylandCanvas canvas_;
  WaylandHandle<xdg_surface> surface_;
  WaylandHandle<xdg_toplevel> toplevel_;
  WaylandHandle<zxdg_toplevel_decoration_v1> decoration_;
};

}  // namespace nivlo
