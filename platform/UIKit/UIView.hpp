// Views: rectangles in a tree, each with a layer that shows its picture.
#pragma once

#include <memory>
#include <vector>

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/UIKit/CALayer.hpp"

namespace nivlo {

/// A rectangle on the screen that may contain other views. Pictures are shown by its layer, and by the layers
/// that are added to that. A view is destroyed on the main thread, wherever its last reference is dropped, if
/// it was made by initWithFrame or by ownedByMainThread.
///
/// Main thread only.
class UIView : public std::enable_shared_from_this<UIView> {
 public:
  /// Makes a view with this frame. Null when a number of the frame is not finite, or its size is negative.
  static std::shared_ptr<UIView> initWithFrame(CGRect frame);
  virtual ~UIView() = default;
  UIView(const UIView&) = delete;
  UIView& operator=(const UIView&) = delete;

  /// The view's rectangle in the coordinates of its superview.
  CGRect frame() const { return layer_->frame(); }
  /// Moves and resizes the view and its layer; subviews and sublayers keep their own frames.
  void setFrame(CGRect frame) { layer_->setFrame(frame); }
  /// The view's rectangle in its own coordinates: the frame's size, at the origin.
  CGRect bounds() const { return layer_->bounds(); }
  /// The view's layer, the same one for the whole life of the view; never null.
  const std::shared_ptr<CALayer>& layer() const { return layer_; }

  /// The views inside this one; the last of them lies on top.
  const std::vector<std::shared_ptr<UIView>>& subviews() const { return subviews_; }
  /// The view that this one is in, or null.
  std::shared_ptr<UIView> superview() const { return superview_.lock(); }
  /// Puts the view, with its layer, on top of the other subviews, and removes it from its previous superview.
  /// Does nothing for null, for this view itself, and for a view that contains it.
  void addSubview(std::shared_ptr<UIView> view);
  /// Does nothing for a view that has no superview.
  void removeFromSuperview();

 protected:
  /// For a subclass, whose own factory checks the frame with isUsableFrame first.
  explicit UIView(CGRect frame);
  /// Returns whether initWithFrame accepts this frame.
  static bool isUsableFrame(CGRect frame);

 private:
  std::shared_ptr<CALayer> layer_;
  std::weak_ptr<UIView> superview_;
  std::vector<std::shared_ptr<UIView>> subviews_;
};

}  // namespace nivlo
