// The wallpaper of one output.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

#include "host/loop/EventSource.hpp"
#include "host/surfaces/wayland/WaylandCanvas.hpp"
#include "host/surfaces/wayland/WaylandPainter.hpp"
#include "linux/timing/Backoff.hpp"

namespace nivlo {

/// A layer surface below all windows. If the compositor closes it, a new one is opened for as long as this
/// object lives. Main thread only.
class LayerBackground {
 public:
  /// It belongs to this layer of the layer shell. `changed` is called when `isStarved` has changed.
  /// Everything referred to must outlive this object.
  LayerBackground(const WaylandGlobals& globals, const WaylandOutput& output, WaylandPainter& painter,
                  zwlr_layer_shell_v1_layer layer, std::function<void()> changed);
  ~LayerBackground();
  LayerBackground(const LayerBackground&) = delete;
  LayerBackground& operator=(const LayerBackground&) = delete;

  const WaylandOutput& output() const { return output_; }
  /// Returns whether the compositor has stopped asking for pictures (see WaylandCanvas).
  bool isStarved() const { return canvas_ && canvas_->isStarved(); }

  /// Moves it to another layer.
  void setLayer(zwlr_layer_shell_v1_layer layer);
  /// To be called when the output may have changed; a new scale makes it redraw.
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
  zwlr_layer_shell_v1_layer layer_;
  std::function<void()> changed_;
  std::optional<WaylandCanvas> canvas_;
  WaylandHandle<zwlr_layer_surface_v1> layerSurface_;
  int scale_ = 1;
  /// Growing delays, so that a compositor that closes every surface at once cannot keep the program busy.
  Backoff reopenDelay_{std::chrono::milliseconds(200), std::chrono::seconds(10)};
  EventSource reopening_;
};

}  // namespace nivlo
