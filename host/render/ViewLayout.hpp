// The places of a view's pictures on a surface.
#pragma once

#include <memory>
#include <vector>

#include "host/render/FramePace.hpp"
#include "platform/AVFoundation/CaptureFrame.hpp"
#include "platform/AVFoundation/PictureGeometry.hpp"
#include "platform/UIKit/UIView.hpp"

namespace nivlo {

/// A view, and the size of the surface that it was laid out for. On a surface of another size every layer is
/// stretched with it.
struct LaidOutView {
  std::shared_ptr<UIView> view;
  CGSize size;
  std::shared_ptr<const FramePace> pace = nullptr;  ///< how often to draw it; null for no limit
};

/// The picture that a layer shows at the moment, and the layer's place.
struct PlacedPicture {
  CaptureFrame frame;  ///< never without a picture
  AVLayerVideoGravity gravity;
  CGRect rect;  ///< the layer's, on the surface
};

/// The same rectangle on a surface of another size.
CGRect stretched(CGRect rect, CGSize from, CGSize to);

/// The pictures of all layers of the view that have one, the lowest first. Main thread only.
std::vector<PlacedPicture> placedPictures(const LaidOutView& view, CGSize surface);

}  // namespace nivlo
