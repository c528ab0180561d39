#include "platform/CoreGraphics/CGPath.hpp"

namespace nivlo {

namespace {

void add(const CGMutablePathRef& path, CGPathElement::Type type, const CGAffineTransform* transform,
         CGPoint point) {
  path->elements.push_back({type, transform ? CGPointApplyAffineTransform(point, *transform) : point});
}

}  // namespace

CGMutablePathRef CGPathCreateMutable() { return std::make_shared<CGPath>(); }

void CGPathMoveToPoint(const CGMutablePathRef& path, const CGAffineTransform* transform, double x, double y) {
  add(path, CGPathElement::Type::MoveToPoint, transform, {x, y});
}

void CGPathAddLineToPoint(const CGMutablePathRef& path, const CGAffineTransform* transform, double x,
                          double y) {
  add(path, CGPathElement::Type::AddLineToPoint, transform, {x, y});
}

void CGPathCloseSubpath(const CGMutablePathRef& path) {
  add(path, CGPathElement::Type::CloseSubpath, nullptr, {});
}

void CGPathRelease(CGMutablePathRef& path) { path.reset(); }

}  // namespace nivlo
