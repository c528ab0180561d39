// A Wayland surface that pictures are put on.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include "host/loop/EventSource.hpp"
#include "host/surfaces/wayland/ShmPictures.hpp"
#include "host/surfaces/wayland/WaylandConnection.hpp"

namespace nivlo {

/// A picture that can be shown on several canvases.
struct ShownPicture {
  std::shared_ptr<ShmPictures> pictures;
  int index = 0;
  unsigned sequence = 0;  ///< counts up from 1 with each picture
};

/// Takes a part of a picture, has it scaled by the compositor where that is offered, and takes the next only
/// when the compositor asks for one. Whoever gives the surface its role calls `resize` when the compositor
/// has configured it. Main thread only.
class WaylandCanvas {
 public:
  struct Handlers {
    std::function<void()> wantsPicture;  ///< the compositor is ready for another picture
    /// The compositor has stopped asking for pictures, or asks again: nothing of the surface can be seen, or
    /// the screen is off.
    std::function<void()> starvationChanged;
  };

  WaylandCanvas(const WaylandGlobals& globals, Handlers handlers);
  ~WaylandCanvas();
  WaylandCanvas(const WaylandCanvas&) = delete;
  WaylandCanvas& operator=(const WaylandCanvas&) = delete;

  wl_surface* surface() const { return surface_.get(); }

  /// In the compositor's logical pixels; `scale` is the output's whole one.
  void resize(int width, int height, int scale);
  bool isConfigured() const { return width_ > 0; }
  CGSize size() const { return {static_cast<double>(width_), static_cast<double>(height_)}; }
  /// Of a picture that needs no scaling.
  PictureSize pixelSize() const;
  bool canScale() const { return viewport_ != nullptr; }

  bool wantsPicture() const { return isConfigured() && !frame_; }
  bool isStarved() const { return starved_; }
  /// The sequence of the picture that it shows, 0 before the first.
  unsigned shown() const { return shown_; }

  /// Shows a part of the picture. It must have the pixel size where the canvas cannot scale.
  void present(const ShownPicture& picture, PixelRect part);
  /// Whether it keeps the picture from being drawn anew.
  bool holds(const ShownPicture& picture) const;

 private:
  struct Buffer;
  static const wl_callback_listener kFrameListener;
  static const wl_buffer_listener kBufferListener;
  static const wp_fractional_scale_v1_listener kScaleListener;

  Buffer& bufferOf(const ShownPicture& picture, PixelRect part);
  void markOpaque();
  void requestFrame();
  void frameDone();
  void watchForStarvation(std::chrono::milliseconds delay);
  void setStarved(bool starved);

  const WaylandGlobals& globals_;
  Handlers handlers_;
  WaylandHandle<wl_surface> surface_;
  WaylandHandle<wp_viewport> viewport_;
  WaylandHandle<wp_fractional_scale_v1> fractional_;
  int width_ = 0;
  int height_ = 0;
  int scale_ = 1;
  double fractionalScale_ = 0;  ///< 0 where the compositor does not tell
  std::vector<std::unique_ptr<Buffer>> buffers_;
  unsigned shown_ = 0;
  WaylandHandle<wl_callback> frame_;
  std::chrono::steady_clock::time_point asked_;
  bool starved_ = false;
  bool watching_ = false;
  EventSource watch_;
};

}  // namespace nivlo
