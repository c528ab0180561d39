// Draws a view into pixels.
#pragma once

#include <memory>

#include "host/render/PictureConverter.hpp"
#include "host/render/ViewLayout.hpp"

namespace nivlo {

/// Converts a frame once for all targets that it is drawn into one after the other. Main thread only.
class LayerRenderer {
 public:
  /// Draws the pictures of the view's layers on black, each clipped to its layer. Returns whether any of them
  /// can be seen.
  bool render(const LaidOutView& view, PixelsView target);

 private:
  PixelsView upright(const CaptureFrame& frame);

  PictureConverter converter_;
  Pixels upright_;
  std::weak_ptr<const VideoFrame> converted_;  ///< the frame that `upright_` holds
  PictureGeometry convertedGeometry_;
};

}  // namespace nivlo
