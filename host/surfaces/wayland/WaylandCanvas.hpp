// A Wayland surface that shows pictures.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include "host/loop/EventSource.hpp"
#include "host/surfaces/wayland/ShmPictures.hpp"
#include "host/surfaces/wayland/WaylandConnection.hpp"

namespace nivlo {

/// A picture in shared memory, which several canvases may show.
struct ShownPicture {
  std::shared_ptr<ShmPictures> pictures;
  int index = 0;          ///< in `pictures`
  unsigned sequence = 0;  ///< counts up from 1 with each picture
};

/// Shows a part of a picture, scaled by the compositor where it can, and wants the next one only when the
/// compositor asks for it. Whoever gives the surface its role must call `resize` whenever the compositor has
/// configured it. Main thread only.
class WaylandCanvas {
 public:
  struct Handlers {
    std::function<void()> wantsPicture;       ///< the compositor is ready for another picture
    std::function<void()> starvationChanged;  ///< `isStarved` has changed
  };

  /// `globals` must outlive the canvas.
  WaylandCanvas(const WaylandGlobals& globals, Handlers handlers);
  ~WaylandCanvas();
  WaylandCanvas(const WaylandCanvas&) = delete;
  WaylandCanvas& operator=(const WaylandCanvas&) = delete;

  wl_surface* surface() const { return surface_.get(); }

  /// Takes the size in the compositor's logical pixels and the output's integer scale. What the canvas shows
  /// is not drawn anew.
  void resize(int width, int height, int scale);
  /// Returns whether the size is known; nothing can be shown before.
  bool isConfigured() const { return width_ > 0; }
  /// In the compositor's logical pixels.
  CGSize size() const { return {static_cast<double>(width_), static_cast<double>(height_)}; }
  /// The size of a picture that needs no scaling.
  PictureSize pixelSize() const;
  bool canScale() const { return viewport_ != nullptr; }

  bool wantsPicture() const { return isConfigured() && !frame_; }
  /// Returns whether the compositor has stopped asking for pictures, because none of the surface can be seen
  /// or because the screen is off.
  bool isStarved() const { return starved_; }
  /// The sequence number of the picture on show, 0 before the first.
  unsigned shown() const { return shown_; }

  /// Shows a part of the picture. Where the canvas cannot scale, the part must have the size `pixelSize`.
  void present(const ShownPicture& picture, PixelRect part);
  /// Returns whether the compositor may still read the picture on behalf of this canvas, so that nothing new
  /// may be drawn into it.
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
  double fractionalScale_ = 0;  ///< 0 if the compositor does not tell
  std::vector<std::unique_ptr<Buffer>> buffers_;
  unsigned shown_ = 0;
  WaylandHandle<wl_callback> frame_;
  std::chrono::steady_clock::time_point asked_;
  bool starved_ = false;
  bool watching_ = false;
  EventSource watch_;
};

}  // namespace nivlo
