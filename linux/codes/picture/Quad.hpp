// Outlines of codes: convex quadrilaterals in pixels.
#pragma once

#include <array>
#include <optional>

#include "platform/CoreGraphics/CGGeometry.hpp"

namespace nivlo {

/// Clockwise (y grows downwards), from the code's own top left.
using Quad = std::array<CGPoint, 4>;

double distanceBetween(CGPoint first, CGPoint second);

/// The mean of the corners.
CGPoint centreOf(const Quad& quad);

/// In square pixels; never negative, whichever way the corners run.
double areaOf(const Quad& quad);

/// The quad with each corner moved away from the centre, to `factor` times its distance.
Quad scaledAboutCentre(const Quad& quad, double factor);

/// The quad with every corner (x, y) at (scale * x + offset.x, scale * y + offset.y).
Quad scaledAndMoved(const Quad& quad, double scale, CGPoint offset);

/// Whether two convex quads share any point.
bool overlap(const Quad& first, const Quad& second);

struct Line {
  CGPoint point;      ///< any on it
  CGPoint direction;  ///< of any length
};

/// Where they cross; nothing where that is far off, as the angle between them is less than 17 degrees.
std::optional<CGPoint> intersectionOf(const Line& first, const Line& second);

}  // namespace nivlo
