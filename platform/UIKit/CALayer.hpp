// A rectangle in a tree of rectangles; what is drawn in it is for its kind to say.
#pragma once

#include <memory>
#include <vector>

#include "platform/CoreGraphics/CGGeometry.hpp"

namespace nivlo {

/// Main thread only, unless a subclass says otherwise of an operation.
class CALayer : public std::enable_shared_from_this<CALayer> {
 public:
  CALayer() = default;
  virtual ~CALayer() = default;
  CALayer(const CALayer&) = delete;
  CALayer& operator=(const CALayer&) = delete;

  /// In the superlayer's coordinates.
  CGRect frame() const { return frame_; }
  virtual void setFrame(CGRect frame) { frame_ = frame; }
  /// In its own: the frame's size at the origin.
  CGRect bounds() const { return {{0, 0}, frame_.size}; }

  /// Later ones lie on top.
  const std::vector<std::shared_ptr<CALayer>>& sublayers() const { return sublayers_; }
  std::shared_ptr<CALayer> superlayer() const { return superlayer_.lock(); }
  /// Puts the layer on top, out of wherever it was. Nothing happens for null, or for the layer itself or one
  /// above it.
  void addSublayer(std::shared_ptr<CALayer> layer);
  void removeFromSuperlayer();

 private:
  CGRect frame_;
  std::weak_ptr<CALayer> superlayer_;
  std::vector<std::shared_ptr<CALayer>> sublayers_;
};

}  // namespace nivlo
