// Small helpers over cairo that the demo pictures share.
#pragma once

#include <memory>
#include <vector>

#include <cairo.h>

namespace nivlo {

struct DestroySurface {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
struct DestroyContext {
  void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
};
struct DestroyPattern {
  void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
};

/// A picture that is drawn once and painted often.
using Layer = std::unique_ptr<cairo_surface_t, DestroySurface>;
using Context = std::unique_ptr<cairo_t, DestroyContext>;

struct Point {
  double x = 0;
  double y = 0;
};

/// 0xRRGGBB with an opacity.
struct Paint {
  unsigned rgb = 0;
  double alpha = 1;
};

/// A colour at a position from 0 to 1 along a gradient.
struct Stop {
  double offset = 0;
  Paint paint;
};

/// A transparent layer, in pixels.
Layer makeLayer(int width, int height);
Context drawOn(const Layer& layer);

void setPaint(cairo_t* cairo, Paint paint);
void setVerticalGradient(cairo_t* cairo, double top, double bottom, const std::vector<Stop>& stops);
void setRadialGradient(cairo_t* cairo, Point center, double radius, const std::vector<Stop>& stops);

/// These fill with the current source.
void fillRectangle(cairo_t* cairo, double x, double y, double width, double height);
void fillRounded(cairo_t* cairo, double x, double y, double width, double height, double radius);
void fillEllipse(cairo_t* cairo, Point center, double radiusX, double radiusY);
void fillPolygon(cairo_t* cairo, const std::vector<Point>& corners);

/// Light around a point, strongest in its middle.
void drawGlow(cairo_t* cairo, Point center, double radius, Paint paint);

/// Paints the layer with its top left corner at a point, moved to whole pixels so that it stays sharp and
/// cheap.
void paintLayer(cairo_t* cairo, const Layer& layer, Point topLeft, double alpha = 1);

/// A cloud as wide as the layer that is returned.
Layer drawCloud(int width, Paint top, Paint bottom);

/// Runs from 0 to 1 as `value` runs from `from` to `to`, slow at both ends; flat outside.
double smoothStep(double from, double to, double value);

/// A number from 0 to 1 that depends on nothing but the index, and looks random.
double scatter(unsigned index);

}  // namespace nivlo
