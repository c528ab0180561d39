// The desktop background on a Wayland compositor.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/surfaces/AwaitedOutput.hpp"
#include "host/surfaces/Surface.hpp"
#include "host/surfaces/wayland/LayerBackground.hpp"
#include "host/surfaces/wayland/WaylandLayer.hpp"
#include "host/surfaces/wayland/WaylandPainter.hpp"
#include "host/surfaces/wayland/WaylandToplevels.hpp"
#include "host/surfaces/windows/WindowPlaces.hpp"

namespace nivlo {

/// A wallpaper below all windows on every output, or on the one that the options name, while outputs come and
/// go. Main thread only.
class WaylandDesktop : public Surface {
 public:
  /// Returns null, with the cause and the remedy in `*error`, if the compositor cannot be reached or has no
  /// layer shell.
  static std::unique_ptr<Surface> open(const SurfaceOptions& options, SurfaceHandlers handlers,
                                       std::string* error);
  ~WaylandDesktop() override;

  std::string name() const override { return "the desktop (Wayland)"; }
  CGSize size() const override;
  std::string awaited() const override { return awaited_.text(); }
  void show(LaidOutView view) override;

 private:
  WaylandDesktop(std::unique_ptr<WaylandConnection> connection, const SurfaceOptions& options,
                 SurfaceHandlers handlers);
  zwlr_layer_shell_v1_layer layer() const;
  bool isWanted(const WaylandOutput& output) const;
  void followOutputs();
  void updateVisible();
  Cover coverOf(const WaylandOutput& output) const;
  bool isHidden(const LayerBackground& background) const;

  SurfaceOptions options_;
  SurfaceHandlers handlers_;
  std::unique_ptr<WaylandConnection> connection_;
  WaylandPainter painter_;
  WaylandToplevels toplevels_;
  std::optional<WindowPlaces> places_;
  WaylandLayer layer_;
  std::vector<std::unique_ptr<LayerBackground>> backgrounds_;
  AwaitedOutput awaited_;
  bool visible_ = true;
};

}  // namespace nivlo
