#include "platform/CoreGraphics/CGGeometry.hpp"

#include <algorithm>
#include <variant>

#include "platform/Foundation/NSDictionary.hpp"

namespace nivlo {

CGRect CGRectIntersection(CGRect first, CGRect second) {
  const double left = std::max(first.origin.x, second.origin.x);
  const double top = std::max(first.origin.y, second.origin.y);
  const double right = std::min(first.origin.x + first.size.width, second.origin.x + second.size.width);
  const double bottom = std::min(first.origin.y + first.size.height, second.origin.y + second.size.height);
  return {{left, top}, {std::max(0.0, right - left), std::max(0.0, bottom - top)}};
}

CGRect CGRectOffset(CGRect rect, double dx, double dy) {
  return {{rect.origin.x + dx, rect.origin.y + dy}, rect.size};
}

CGPoint CGPointApplyAffineTransform(CGPoint point, const CGAffineTransform& t) {
  return {t.a * point.x + t.c * point.y + t.tx, t.b * point.x + t.d * point.y + t.ty};
}

CGAffineTransform CGAffineTransformConcat(const CGAffineTransform& first, const CGAffineTransform& second) {
  const CGPoint origin = CGPointApplyAffineTransform({first.tx, first.ty}, second);
  return {first.a * second.a + first.b * second.c,
          first.a * second.b + first.b * second.d,
          first.c * second.a + first.d * second.c,
          first.c * second.b + first.d * second.d,
          origin.x,
          origin.y};
}

NSDictionary CGPointCreateDictionaryRepresentation(CGPoint point) {
  return NSDictionary{{"X", point.x}, {"Y", point.y}};
}

bool CGPointMakeWithDictionaryRepresentation(const NSDictionary& dictionary, CGPoint* point) {
  const auto* x = dictionary.objectForKey("X");
  const auto* y = dictionary.objectForKey("Y");
  if (!x || !y || !std::holds_alternative<double>(*x) || !std::holds_alternative<double>(*y)) {
    return false;
  }
  *point = {std::get<double>(*x), std::get<double>(*y)};
  return true;
}

}  // namespace nivlo
