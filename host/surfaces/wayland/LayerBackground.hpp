// The wallpaper of one output.
#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "host/loop/EventSource.hpp"
#include "host/surfaces/wayland/WaylandCanvas.hpp"
#include "host/surfaces/wayland/WaylandPainter.hpp"
#include "linux/timing/Backoff.hpp"

namespace nivlo {

/// A layer surface under all windows. When the compositor closes it, it is made again, as long as this lives.
/// Main thread only.
class LayerBackground {
 public:
  /// `changed` is called when it has become starved or is not any more.
  LayerBackground(const WaylandGlobals& globals, const WaylandOutput& output, WaylandPainter& painter,
                  std::function<void()> changed);
  ~LayerBackground();
  LayerBackground(const LayerBackground&) = delete;
  LayerBackground& operator=(const LayerBackground&) = delete;

  const WaylandOutput& output() const { return output_; }
  bool isStarved() const { return canvas_ && canvas_->isStarved(); }

  /// The output's scale may have changed.
  void outputChanged();

 private:
  static const zwlr_layer_surface_v1_listener kListener;

  void open();
  void close();
  void configured(std::uint32_t serial, int width, int height);
  void closedByCompositor();

  const WaylandGlobals& globals_;
  const WaylandOutput& output_;
  WaylandPainter& painter_;
  std::function<void()> changed_;
  std::optional<WaylandCanvas> canvas_;
  WaylandHandle<zwlr_layer_surface_v1> layer_;
  int scale_ = 1;
  /// A compositor that closes every surface must not keep the program busy.
  Backoff reopenDelay_{std::chrono::milliseconds(200), std::chrono::seconds(10)};
  EventSource reopening_;
};

}  // namespace nivlo
