// Draws a view into a pixel buffer.
#pragma once

#include <memory>

#include "host/render/PictureConverter.hpp"
#include "host/render/ViewLayout.hpp"

namespace nivlo {

/// Draws the pictures of a view. A frame that is drawn into several targets in a row is converted only once.
/// Main thread only.
class LayerRenderer {
 public:
  /// Draws the pictures of the view's layers on black, each clipped to its layer. Returns whether any of them
  /// can be seen.
  bool render(const LaidOutView& view, PixelSpan target);

 private:
  PixelSpan upright(const CaptureFrame& frame);

  PictureConverter converter_;
  Pixels upright_;
  std::weak_ptr<const VideoFrame> converted_;  ///< the frame whose pixels `upright_` holds
  PictureGeometry convertedGeometry_;
};

}  // namespace nivlo
