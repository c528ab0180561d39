// Paths of straight lines, for outlines of shapes.
#pragma once

#include <memory>
#include <vector>

#include "platform/CoreGraphics/CGGeometry.hpp"

namespace nivlo {

/// One step of a path.
struct CGPathElement {
  enum class Type { MoveToPoint, AddLineToPoint, CloseSubpath };
  Type type = Type::MoveToPoint;
  CGPoint point;  ///< (0, 0) for CloseSubpath
  bool operator==(const CGPathElement&) const = default;
};

/// A path: its elements in the order in which they were added.
struct CGPath {
  std::vector<CGPathElement> elements;
  bool operator==(const CGPath&) const = default;
};

/// A shared path. The functions below require one that is not null, except for CGPathRelease.
using CGMutablePathRef = std::shared_ptr<CGPath>;

/// Makes an empty path.
CGMutablePathRef CGPathCreateMutable();
/// Begins a new subpath at the point. A null transform leaves the point as it is.
void CGPathMoveToPoint(const CGMutablePathRef& path, const CGAffineTransform* transform, double x, double y);
/// Adds a straight line from the last point. A null transform leaves the point as it is.
void CGPathAddLineToPoint(const CGMutablePathRef& path, const CGAffineTransform* transform, double x,
                          double y);
/// Closes the subpath with a line from its last point to its first.
void CGPathCloseSubpath(const CGMutablePathRef& path);
/// Sets the reference to null; the path is freed with its last reference.
void CGPathRelease(CGMutablePathRef& path);

}  // namespace nivlo
