// Points, sizes, rectangles, and affine transforms between coordinate systems.
#pragma once

namespace nivlo {

class NSDictionary;

/// A place, in whatever coordinates its user says.
struct CGPoint {
  double x = 0;
  double y = 0;
  bool operator==(const CGPoint&) const = default;
};

/// A width and a height, in the same units as the coordinates around it.
struct CGSize {
  double width = 0;
  double height = 0;
  bool operator==(const CGSize&) const = default;
};

/// A rectangle. Its origin is its top left corner; y grows downwards.
struct CGRect {
  CGPoint origin;
  CGSize size;
  bool operator==(const CGRect&) const = default;
};

/// The area that both rectangles cover; a rectangle of width or height 0 when they do not overlap.
CGRect CGRectIntersection(CGRect first, CGRect second);
/// The rectangle moved by (dx, dy).
CGRect CGRectOffset(CGRect rect, double dx, double dy);

/// An affine transform, which maps (x, y) to (a*x + c*y + tx, b*x + d*y + ty).
struct CGAffineTransform {
  double a = 1;
  double b = 0;
  double c = 0;
  double d = 1;
  double tx = 0;
  double ty = 0;
};

/// The point to which the transform maps the point.
CGPoint CGPointApplyAffineTransform(CGPoint point, const CGAffineTransform& transform);
/// The transform that applies `first`, and then `second` to the result.
CGAffineTransform CGAffineTransformConcat(const CGAffineTransform& first, const CGAffineTransform& second);

/// The point as a dictionary with the numbers "X" and "Y".
NSDictionary CGPointCreateDictionaryRepresentation(CGPoint point);
/// Reads a point from such a dictionary. Returns false, and leaves `*point` as it was, when "X" or "Y" is
/// missing or is not a number.
bool CGPointMakeWithDictionaryRepresentation(const NSDictionary& dictionary, CGPoint* point);

}  // namespace nivlo
