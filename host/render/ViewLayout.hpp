// Where a view's previews come to lie on a surface.
#pragma once

#include <memory>
#include <vector>

#include "platform/AVFoundation/AVCaptureVideoPreviewLayer.hpp"
#include "platform/UIKit/UIView.hpp"

namespace nivlo {

/// A view and the size of the surface that its frames were made for. On a surface of another size every layer
/// takes the same part of it.
struct LaidOutView {
  std::shared_ptr<UIView> view;
  CGSize size;
};

struct PlacedPreview {
  std::shared_ptr<AVCaptureVideoPreviewLayer> layer;
  CGRect rect;  ///< on the surface
};

/// All preview layers of the view, the lowest first. Main thread only.
std::vector<PlacedPreview> placedPreviews(const LaidOutView& view, CGSize surface);

}  // namespace nivlo
