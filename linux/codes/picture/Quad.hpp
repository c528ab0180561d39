// Convex quadrilaterals in pixels, such as the outlines of codes.
#pragma once

#include <array>
#include <optional>

#include "platform/CoreGraphics/CGGeometry.hpp"

namespace nivlo {

/// Corners clockwise (y grows downwards), starting at the code's own top left.
using Quad = std::array<CGPoint, 4>;

/// Returns the distance in pixels.
double distanceBetween(CGPoint first, CGPoint second);

/// Returns the mean of the corners.
CGPoint centreOf(const Quad& quad);

/// In square pixels; never negative, even when the corners run anticlockwise.
double areaOf(const Quad& quad);

/// Returns the quad with every corner at `factor` times its distance from the centre.
Quad scaledAboutCentre(const Quad& quad, double factor);

/// Returns the quad with every corner (x, y) moved to (scale * x + offset.x, scale * y + offset.y).
Quad scaledAndMoved(const Quad& quad, double scale, CGPoint offset);

/// Returns whether two convex quads share any point.
bool overlap(const Quad& first, const Quad& second);

/// A straight line without ends.
struct Line {
  CGPoint point;      ///< any point of the line
  CGPoint direction;  ///< of any length
};

/// Returns where the lines cross, or nothing when they meet at less than 17 degrees: such a crossing is far
/// off and inaccurate.
std::optional<CGPoint> intersectionOf(const Line& first, const Line& second);

}  // namespace nivlo
