// A view: a rectangle on the screen with views inside it.
#pragma once

#include <memory>
#include <vector>

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/UIKit/CALayer.hpp"

namespace nivlo {

/// Main thread only.
class UIView : public std::enable_shared_from_this<UIView> {
 public:
  /// Null where the frame is no rectangle: a number in it is not finite, or its size is negative.
  static std::shared_ptr<UIView> initWithFrame(CGRect frame);
  virtual ~UIView() = default;
  UIView(const UIView&) = delete;
  UIView& operator=(const UIView&) = delete;

  /// In the superview's coordinates. A view's layer has the view's frame.
  CGRect frame() const { return layer_->frame(); }
  void setFrame(CGRect frame) { layer_->setFrame(frame); }
  CGRect bounds() const { return layer_->bounds(); }
  const std::shared_ptr<CALayer>& layer() const { return layer_; }

  const std::vector<std::shared_ptr<UIView>>& subviews() const { return subviews_; }
  std::shared_ptr<UIView> superview() const { return superview_.lock(); }
  /// Puts the view, and its layer, on top, out of wherever it was. Nothing happens for null, or for the view
  /// itself or one above it.
  void addSubview(std::shared_ptr<UIView> view);
  void removeFromSuperview();

 protected:
  /// The frame must be a rectangle (see isUsableFrame).
  explicit UIView(CGRect frame);
  static bool isUsableFrame(CGRect frame);

 private:
  std::shared_ptr<CALayer> layer_;
  std::weak_ptr<UIView> superview_;
  std::vector<std::shared_ptr<UIView>> subviews_;
};

}  // namespace nivlo
