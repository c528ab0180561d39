// Helpers for drawing the demo scenes with cairo.
#pragma once

#include <vector>

#include <cairo.h>

#include "linux/handles/Owned.hpp"

namespace nivlo {

/// An image that is drawn once and painted many times.
using Layer = Owned<cairo_surface_t, cairo_surface_destroy>;
using Context = Owned<cairo_t, cairo_destroy>;

struct Point {
  double x = 0;
  double y = 0;
};

/// A colour, 0xRRGGBB, with an opacity from 0 to 1.
struct Paint {
  unsigned rgb = 0;
  double alpha = 1;
};

/// A colour at a position from 0 to 1 along a gradient.
struct Stop {
  double offset = 0;
  Paint paint;
};

/// A layer of this size in pixels, transparent all over.
Layer makeLayer(int width, int height);

/// A context that draws on the layer, which must outlive it.
Context drawOn(const Layer& layer);

/// These three choose what the fill functions below fill with.
void setPaint(cairo_t* cairo, Paint paint);
void setVerticalGradient(cairo_t* cairo, double top, double bottom, const std::vector<Stop>& stops);
void setRadialGradient(cairo_t* cairo, Point center, double radius, const std::vector<Stop>& stops);

/// These fill a shape. A polygon is closed from its last corner to its first.
void fillRectangle(cairo_t* cairo, double x, double y, double width, double height);
void fillRounded(cairo_t* cairo, double x, double y, double width, double height, double radius);
void fillEllipse(cairo_t* cairo, Point center, double radiusX, double radiusY);
void fillPolygon(cairo_t* cairo, const std::vector<Point>& corners);

/// Paints light around a point, brightest in the middle and fading to nothing at `radius`.
void drawGlow(cairo_t* cairo, Point center, double radius, Paint paint);

/// Paints the layer with its top left corner at a point, rounded to whole pixels: anything else would blur it
/// and take longer.
void paintLayer(cairo_t* cairo, const Layer& layer, Point topLeft, double alpha = 1);

/// Draws a cloud into a new layer of this width in pixels, coloured from `top` to `bottom`.
Layer drawCloud(int width, Paint top, Paint bottom);

/// Rises from 0 to 1 while `value` goes from `from` to `to`, which may be the smaller one; gently at both
/// ends, and constant outside.
double smoothStep(double from, double to, double value);

/// A number from 0 to 1 that looks random but is always the same for the same index.
double scatter(unsigned index);

}  // namespace nivlo
