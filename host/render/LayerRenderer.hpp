// Draws a view into pixels.
#pragma once

#include "host/render/PictureConverter.hpp"
#include "host/render/ViewLayout.hpp"

namespace nivlo {

/// Main thread only.
class LayerRenderer {
 public:
  /// Draws the view on black, laid out for the target's size. Each preview layer shows its newest frame,
  /// clipped to the layer. Returns whether any layer had a picture to show.
  bool render(const LaidOutView& view, PixelsView target);

 private:
  bool drawPicture(const CaptureFrame& frame, AVLayerVideoGravity gravity, CGRect rect, PixelsView target);

  PictureConverter converter_;
  Pixels upright_;
};

}  // namespace nivlo
