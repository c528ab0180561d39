// Draws a layer tree.
#pragma once

#include "host/render/PictureConverter.hpp"
#include "platform/UIKit/CALayer.hpp"

namespace nivlo {

/// Main thread only.
class LayerRenderer {
 public:
  /// Draws the tree on black, the root at its frame's place. Each preview layer shows its newest frame,
  /// clipped to the layer. Returns whether any layer had a picture to show.
  bool render(const CALayer& root, Pixels& target);

 private:
  bool renderLayer(const CALayer& layer, CGPoint parentOrigin, Pixels& target);
  bool drawPicture(const CaptureFrame& frame, AVLayerVideoGravity gravity, CGRect rect, Pixels& target);

  PictureConverter converter_;
};

}  // namespace nivlo
