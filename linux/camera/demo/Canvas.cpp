#include "linux/camera/demo/Canvas.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace nivlo {
namespace {

using Pattern = Owned<cairo_pattern_t, cairo_pattern_destroy>;

void addStops(cairo_pattern_t* pattern, const std::vector<Stop>& stops) {
  for (const auto& [offset, paint] : stops) {
    cairo_pattern_add_color_stop_rgba(pattern, offset, (paint.rgb >> 16 & 255) / 255.0,
                                      (paint.rgb >> 8 & 255) / 255.0, (paint.rgb & 255) / 255.0, paint.alpha);
  }
}

}  // namespace

Layer makeLayer(int width, int height) {
  return Layer(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
}

Context drawOn(const Layer& layer) { return Context(cairo_create(layer.get())); }

void setPaint(cairo_t* cairo, Paint paint) {
  cairo_set_source_rgba(cairo, (paint.rgb >> 16 & 255) / 255.0, (paint.rgb >> 8 & 255) / 255.0,
                        (paint.rgb & 255) / 255.0, paint.alpha);
}

void setVerticalGradient(cairo_t* cairo, double top, double bottom, const std::vector<Stop>& stops) {
  const Pattern pattern(cairo_pattern_create_linear(0, top, 0, bottom));
  addStops(pattern.get(), stops);
  cairo_set_source(cairo, pattern.get());
}

void setRadialGradient(cairo_t* cairo, Point center, double radius, const std::vector<Stop>& stops) {
  const Pattern pattern(cairo_pattern_create_radial(center.x, center.y, 0, center.x, center.y, radius));
  addStops(pattern.get(), stops);
  cairo_set_source(cairo, pattern.get());
}

void fillRectangle(cairo_t* cairo, double x, double y, double width, double height) {
  cairo_rectangle(cairo, x, y, width, height);
  cairo_fill(cairo);
}

void fillRounded(cairo_t* cairo, double x, double y, double width, double height, double radius) {
  constexpr double quarter = std::numbers::pi / 2;
  cairo_new_sub_path(cairo);
  cairo_arc(cairo, x + width - radius, y + radius, radius, -quarter, 0);
  cairo_arc(cairo, x + width - radius, y + height - radius, radius, 0, quarter);
  cairo_arc(cairo, x + radius, y + height - radius, radius, quarter, 2 * quarter);
  cairo_arc(cairo, x + radius, y + radius, radius, 2 * quarter, 3 * quarter);
  cairo_close_path(cairo);
  cairo_fill(cairo);
}

void fillEllipse(cairo_t* cairo, Point center, double radiusX, double radiusY) {
  cairo_matrix_t before;
  cairo_get_matrix(cairo, &before);
  cairo_translate(cairo, center.x, center.y);
  cairo_scale(cairo, radiusX, radiusY);
  cairo_new_sub_path(cairo);
  cairo_arc(cairo, 0, 0, 1, 0, 2 * std::numbers::pi);
  cairo_set_matrix(cairo, &before);
  cairo_fill(cairo);
}

void fillPolygon(cairo_t* cairo, const std::vector<Point>& corners) {
  for (const auto& corner : corners) {
    cairo_line_to(cairo, corner.x, corner.y);
  }
  cairo_close_path(cairo);
  cairo_fill(cairo);
}

void drawGlow(cairo_t* cairo, Point center, double radius, Paint paint) {
  setRadialGradient(cairo, center, radius,
                    {{0, paint},
                     {0.35, {paint.rgb, paint.alpha * 0.45}},
                     {0.68, {paint.rgb, paint.alpha * 0.12}},
                     {1, {paint.rgb, 0}}});
  fillRectangle(cairo, center.x - radius, center.y - radius, 2 * radius, 2 * radius);
}

void paintLayer(cairo_t* cairo, const Layer& layer, Point topLeft, double alpha) {
  cairo_set_source_surface(cairo, layer.get(), std::round(topLeft.x), std::round(topLeft.y));
  alpha < 1 ? cairo_paint_with_alpha(cairo, alpha) : cairo_paint(cairo);
}

Layer drawCloud(int width, Paint top, Paint bottom) {
  struct Puff {
    double x, y, radius;
  };
  // As fractions of the cloud's width.
  constexpr Puff puffs[] = {
      {.16, .25, .09}, {.30, .19, .13}, {.48, .15, .15}, {.66, .20, .12}, {.82, .25, .09}};
  const int height = width * 36 / 100;
  auto layer = makeLayer(width, height);
  const auto cairo = drawOn(layer);
  cairo_push_group_with_content(cairo.get(), CAIRO_CONTENT_ALPHA);
  cairo_set_source_rgb(cairo.get(), 0, 0, 0);
  for (const auto& puff : puffs) {
    fillEllipse(cairo.get(), {puff.x * width, puff.y * width}, puff.radius * width, puff.radius * width);
  }
  fillRounded(cairo.get(), .07 * width, .22 * width, .86 * width, .12 * width, .06 * width);
  const Pattern shape(cairo_pop_group(cairo.get()));
  setVerticalGradient(cairo.get(), 0, height, {{0, top}, {1, bottom}});
  cairo_mask(cairo.get(), shape.get());
  return layer;
}

double smoothStep(double from, double to, double value) {
  const double x = std::clamp((value - from) / (to - from), 0.0, 1.0);
  return x * x * (3 - 2 * x);
}

double scatter(unsigned index) {
  unsigned bits = index * 2654435761U + 374761393U;
  bits = (bits ^ bits >> 15) * 2246822519U;
  bits = (bits ^ bits >> 13) * 3266489917U;
  return static_cast<double>((bits ^ bits >> 16) & 0xFFFFFF) / 0xFFFFFF;
}

}  // namespace nivlo
