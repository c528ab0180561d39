// Paths as objects.
#pragma once

#include <memory>
#include <utility>

#include "platform/CoreGraphics/CGPath.hpp"

namespace nivlo {

/// A path that does not change any more.
class UIBezierPath {
 public:
  /// Copies the path, so that later changes to it make no difference. A null path counts as an empty one.
  static std::shared_ptr<UIBezierPath> bezierPathWithCGPath(const CGMutablePathRef& path);
  /// Makes a closed rectangle, clockwise from its top left corner.
  static std::shared_ptr<UIBezierPath> bezierPathWithRect(CGRect rect);

  /// The path's elements.
  const struct CGPath& CGPath() const { return path_; }

 private:
  explicit UIBezierPath(struct CGPath path) : path_(std::move(path)) {}
  struct CGPath path_;
};

}  // namespace nivlo
