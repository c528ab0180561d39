// Points, rectangles and the affine maps between coordinate systems.
#pragma once

namespace nivlo {

class NSDictionary;

struct CGPoint {
  double x = 0;
  double y = 0;
  bool operator==(const CGPoint&) const = default;
};

struct CGSize {
  double width = 0;
  double height = 0;
  bool operator==(const CGSize&) const = default;
};

/// Origin at the top left, y growing downwards.
struct CGRect {
  CGPoint origin;
  CGSize size;
  bool operator==(const CGRect&) const = default;
};

/// What both cover; a rectangle of size 0 when they do not meet.
CGRect CGRectIntersection(CGRect first, CGRect second);
CGRect CGRectOffset(CGRect rect, double dx, double dy);

/// Maps (x, y) to (a*x + c*y + tx, b*x + d*y + ty).
struct CGAffineTransform {
  double a = 1;
  double b = 0;
  double c = 0;
  double d = 1;
  double tx = 0;
  double ty = 0;
};

CGPoint CGPointApplyAffineTransform(CGPoint point, const CGAffineTransform& transform);
/// First `first`, then `second`.
CGAffineTransform CGAffineTransformConcat(const CGAffineTransform& first, const CGAffineTransform& second);

/// A dictionary with the numbers "X" and "Y".
NSDictionary CGPointCreateDictionaryRepresentation(CGPoint point);
/// Reads such a dictionary. Returns false, and leaves `*point` as it was, when "X" or "Y" is missing or no
/// number.
bool CGPointMakeWithDictionaryRepresentation(const NSDictionary& dictionary, CGPoint* point);

}  // namespace nivlo
