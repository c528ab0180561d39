// Outlines of straight lines.
#pragma once

#include <memory>
#include <vector>

#include "platform/CoreGraphics/CGGeometry.hpp"

namespace nivlo {

struct CGPathElement {
  enum class Type { MoveToPoint, AddLineToPoint, CloseSubpath };
  Type type = Type::MoveToPoint;
  CGPoint point;  ///< (0, 0) for CloseSubpath
  bool operator==(const CGPathElement&) const = default;
};

/// The elements in the order in which they were added.
struct CGPath {
  std::vector<CGPathElement> elements;
  bool operator==(const CGPath&) const = default;
};

using CGMutablePathRef = std::shared_ptr<CGPath>;

CGMutablePathRef CGPathCreateMutable();
/// A null transform uses the point as it is.
void CGPathMoveToPoint(const CGMutablePathRef& path, const CGAffineTransform* transform, double x, double y);
void CGPathAddLineToPoint(const CGMutablePathRef& path, const CGAffineTransform* transform, double x,
                          double y);
/// Joins the last point to the subpath's first.
void CGPathCloseSubpath(const CGMutablePathRef& path);
/// Gives up this reference.
void CGPathRelease(CGMutablePathRef& path);

}  // namespace nivlo
