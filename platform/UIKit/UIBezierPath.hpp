// An outline that can be drawn.
#pragma once

#include <memory>
#include <utility>

#include "platform/CoreGraphics/CGPath.hpp"

namespace nivlo {

class UIBezierPath {
 public:
  /// Keeps a copy of the path; later changes to it do not show.
  static std::shared_ptr<UIBezierPath> bezierPathWithCGPath(const CGMutablePathRef& path);
  /// A closed rectangle, clockwise from its origin.
  static std::shared_ptr<UIBezierPath> bezierPathWithRect(CGRect rect);

  const struct CGPath& CGPath() const { return path_; }

 private:
  explicit UIBezierPath(struct CGPath path) : path_(std::move(path)) {}
  struct CGPath path_;
};

}  // namespace nivlo
