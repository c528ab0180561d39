#include "linux/codes/matrix/ModuleGrid.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include <libyuv/scale.h>

#include "linux/codes/matrix/NestedSquares.hpp"

namespace nivlo {

namespace {

// Pixels per module of the straightened picture, and modules around the square that it shows too.
constexpr int kModule = 6;
constexpr int kBorder = 2;
// Edge strength compares pixels this far to the left and right, and this far above and below.
constexpr int kNear = 1;
// Modules between nodes, and modules around a node, each way, whose edge strength tells where it belongs.
constexpr int kNodeStep = 3;
constexpr int kAround = 3;
// Modules around a module, each way, whose mean brightness tells dark from light.
constexpr int kSurroundings = 4;
// Modules by which a node may be off its expected place: at first, and later on or close to an anchor.
constexpr double kFirstRadius = 0.7;
constexpr double kLaterRadius = 0.35;
constexpr int kLaterRounds = 1;
// Places that are tried from the expected one to the radius, each way.
constexpr int kSteps = 3;
// Penalty per squared pixel of displacement from the expected place, in units of edge strength.
constexpr double kStiffness = 1.2;
// Nodes around a node, each way, from which its expected place is extrapolated.
constexpr int kNodesConsidered = 3;
// Regularises that extrapolation: the larger, the more a slope is drawn towards zero.
constexpr double kFlatness = 0.1;

// Modules from the edges of a QR code to the middle of its last alignment pattern (ISO/IEC 18004).
constexpr double kAlignmentMiddle = 6.5;
// Modules by which the pattern may be off its place in a flat code.
constexpr int kAlignmentReach = 6;
// Likeness is at most 1, for a perfect pattern. A place at the limit of the reach counts for kAlignmentDoubt
// less.
constexpr double kMinLikeness = 0.7;
constexpr double kAlignmentDoubt = 0.2;
// Sum over the pattern's 25 modules; keeps noise on paper from looking like a pattern.
constexpr double kMinPatternContrast = 25;

CGPoint sum(CGPoint a, CGPoint b) { return {a.x + b.x, a.y + b.y}; }

CGPoint times(double factor, CGPoint a) { return {factor * a.x, factor * a.y}; }

CGPoint between(CGPoint a, CGPoint b, double part) {
  return {a.x + part * (b.x - a.x), a.y + part * (b.y - a.y)};
}

/// Returns false for NaN too, which points beyond the horizon of a slanted code have as coordinates.
bool isWithin(double distance, CGPoint shift) {
  return std::abs(shift.x) <= distance && std::abs(shift.y) <= distance;
}

/// Returns the outline of the square and the border around it.
Quad withBorder(const Quad& outline, int modules) {
  const PerspectiveMap map(modules, modules, outline);
  const double near = -kBorder;
  const double far = modules + kBorder;
  return map(Quad{{{near, near}, {far, near}, {far, far}, {near, far}}});
}

/// Both include the border.
int modulesAcross(int modules) { return modules + 2 * kBorder; }
int pixelsAcross(int modules) { return modulesAcross(modules) * kModule; }

}  // namespace

ModuleGrid::ModuleGrid(const LumaPicture& picture, const Quad& outline, int modules)
    : across_(modules),
      nodesAcross_(modules / kNodeStep + 1),
      nodeSpacing_(static_cast<double>(modules) / (nodesAcross_ - 1)),
      toPicture_(pixelsAcross(modules), pixelsAcross(modules), withBorder(outline, modules)) {
  rectify(picture, withBorder(outline, modules), pixelsAcross(modules), pixelsAcross(modules), straight_);
  computeMeans();
  computeEdgeStrength();
  for (int row = 0; row < nodesAcross_; ++row) {
    for (int column = 0; column < nodesAcross_; ++column) {
      nodes_.push_back({{column * nodeSpacing_, row * nodeSpacing_}, {}, false});
    }
  }
}

void ModuleGrid::computeMeans() {
  const int across = modulesAcross(across_);
  LumaBuffer modules;
  modules.resize(across, across);
  const int size = pixelsAcross(across_);
  libyuv::ScalePlane(straight_.row(0), size, size, size, modules.row(0), across, across, across,
                     libyuv::kFilterBox);
  means_.resize(across, across);
  for (int y = 0; y < across; ++y) {
    for (int x = 0; x < across; ++x) {
      int total = 0;
      int count = 0;
      for (int v = std::max(0, y - kSurroundings); v <= std::min(across - 1, y + kSurroundings); ++v) {
        for (int u = std::max(0, x - kSurroundings); u <= std::min(across - 1, x + kSurroundings);
             ++u, ++count) {
          total += modules.row(v)[u];
        }
      }
      means_.row(y)[x] = static_cast<std::uint8_t>(total / count);
    }
  }
}

void ModuleGrid::computeEdgeStrength() {
  const int size = pixelsAcross(across_);
  edgeStrength_.resize(size, size);
  std::fill_n(edgeStrength_.row(0), static_cast<std::size_t>(size) * size, std::uint8_t{0});
  for (int y = kNear; y < size - kNear; ++y) {
    const std::uint8_t* above = straight_.row(y - kNear);
    const std::uint8_t* here = straight_.row(y);
    const std::uint8_t* below = straight_.row(y + kNear);
    std::uint8_t* out = edgeStrength_.row(y);
    for (int x = kNear; x < size - kNear; ++x) {
      out[x] = static_cast<std::uint8_t>(
          (std::abs(here[x + kNear] - here[x - kNear]) + std::abs(below[x] - above[x])) / 2);
    }
  }
}

std::optional<ModuleGrid::Anchor> ModuleGrid::findAlignment(bool lightOnDark) const {
  const CGPoint place{across_ - kAlignmentMiddle, across_ - kAlignmentMiddle};
  const int reach = std::min(kAlignmentReach, across_ / 5) * kModule;
  double best = kMinLikeness;
  std::optional<Anchor> found;
  for (int dy = -reach; dy <= reach; dy += 2) {
    for (int dx = -reach; dx <= reach; dx += 2) {
      const double likeness =
          alignmentLikeness(place, dx, dy, lightOnDark) - kAlignmentDoubt * std::hypot(dx, dy) / reach;
      if (likeness > best) {
        best = likeness;
        found = Anchor{place, toPicture_(CGPoint{(place.x + kBorder) * kModule + dx,
                                                 (place.y + kBorder) * kModule + dy})};
      }
    }
  }
  return found;
}

/// Returns how much the modules around `place`, moved by dx and dy pixels, look like an alignment pattern: a
/// dark module in a light ring in a dark one. Modules outside of the straightened picture do not count.
double ModuleGrid::alignmentLikeness(CGPoint place, int dx, int dy, bool lightOnDark) const {
  const int size = pixelsAcross(across_);
  const LumaPicture straight = straight_.picture();
  const LumaPicture means = means_.picture();
  double likeness = 0;
  double contrast = 0;
  for (int v = -2; v <= 2; ++v) {
    for (int u = -2; u <= 2; ++u) {
      const int x = static_cast<int>((place.x + u + kBorder) * kModule) + dx;
      const int y = static_cast<int>((place.y + v + kBorder) * kModule) + dy;
      if (x < 0 || y < 0 || x >= size || y >= size) {
        continue;
      }
      const int difference = straight.row(y)[x] - means.row(y / kModule)[x / kModule];
      const bool isDark = std::max(std::abs(u), std::abs(v)) != 1;
      likeness += isDark == lightOnDark ? difference : -difference;
      contrast += std::abs(difference);
    }
  }
  return likeness / (contrast + kMinPatternContrast);
}

void ModuleGrid::follow(const std::vector<Anchor>& anchors) {
  std::vector<Step> steps;
  for (int row = 0; row < nodesAcross_; ++row) {
    for (int column = 0; column < nodesAcross_; ++column) {
      steps.push_back(stepTo(column, row, anchors));
    }
  }
  std::sort(steps.begin(), steps.end(), [](const Step& a, const Step& b) { return a.distance < b.distance; });
  for (int round = 0; round <= kLaterRounds; ++round) {
    for (const auto& [column, row, distance, shift] : steps) {
      const bool isNearAnchor = distance <= kNodeStep;
      Slope expected = slopeAt(column, row);
      if (round == 0 && isNearAnchor) {
        expected.shift = shift;
      }
      settle(node(column, row), expected, round == 0 && !isNearAnchor ? kFirstRadius : kLaterRadius);
      node(column, row).isKnown = true;
    }
  }
}

/// Anchors that the map takes far outside of the straightened picture are ignored.
ModuleGrid::Step ModuleGrid::stepTo(int column, int row, const std::vector<Anchor>& anchors) const {
  Step step{column, row, HUGE_VAL, {}};
  for (const Anchor& anchor : anchors) {
    const double distance = distanceBetween(node(column, row).place, anchor.place);
    const CGPoint seen = toPicture_.inverse(anchor.inPicture);
    const CGPoint shift{seen.x - (anchor.place.x + kBorder) * kModule,
                        seen.y - (anchor.place.y + kBorder) * kModule};
    if (distance < step.distance && isWithin(pixelsAcross(across_), shift)) {
      step.distance = distance;
      step.shift = shift;
    }
  }
  return step;
}

/// Fits a plane to the shifts of the known nodes around this one, weighted by their nearness.
ModuleGrid::Slope ModuleGrid::slopeAt(int column, int row) const {
  double n = 0, x = 0, y = 0, xx = kFlatness, yy = kFlatness, xy = 0;
  CGPoint s, sx, sy;
  for (int v = std::max(0, row - kNodesConsidered); v <= std::min(nodesAcross_ - 1, row + kNodesConsidered);
       ++v) {
    for (int u = std::max(0, column - kNodesConsidered);
         u <= std::min(nodesAcross_ - 1, column + kNodesConsidered); ++u) {
      if ((u == column && v == row) || !node(u, v).isKnown) {
        continue;
      }
      const double dx = u - column;
      const double dy = v - row;
      const double weight = 1 / (dx * dx + dy * dy);
      const CGPoint shift = node(u, v).shift;
      n += weight;
      x += weight * dx;
      y += weight * dy;
      xx += weight * dx * dx;
      yy += weight * dy * dy;
      xy += weight * dx * dy;
      s = sum(s, times(weight, shift));
      sx = sum(sx, times(weight * dx, shift));
      sy = sum(sy, times(weight * dy, shift));
    }
  }
  // Solves the normal equations of the plane by Cramer's rule.
  const double a = xx * yy - xy * xy;
  const double b = y * xy - x * yy;
  const double c = x * xy - y * xx;
  const double d = n * yy - y * y;
  const double e = x * y - n * xy;
  const double f = n * xx - x * x;
  const double determinant = n * a + x * b + y * c;
  if (determinant == 0) {
    return {};
  }
  const auto solved = [&](double ofS, double ofSx, double ofSy) {
    return times(1 / determinant, sum(times(ofS, s), sum(times(ofSx, sx), times(ofSy, sy))));
  };
  const CGPoint shift = solved(a, b, c);
  if (!isWithin(pixelsAcross(across_), shift)) {
    return {};
  }
  return {shift, times(1 / nodeSpacing_, solved(b, d, e)), times(1 / nodeSpacing_, solved(c, e, f))};
}

/// Moves the node to the place within the radius, in modules, that has the least edge strength plus penalty.
void ModuleGrid::settle(Node& settled, const Slope& expected, double radius) const {
  double least = HUGE_VAL;
  const double step = radius * kModule / kSteps;
  for (int y = -kSteps; y <= kSteps; ++y) {
    for (int x = -kSteps; x <= kSteps; ++x) {
      const CGPoint displacement{x * step, y * step};
      const Slope slope{sum(expected.shift, displacement), expected.perColumn, expected.perRow};
      const double squared = displacement.x * displacement.x + displacement.y * displacement.y;
      const double strain = edgeStrengthAround(settled.place, slope) + kStiffness * squared;
      if (strain < least) {
        least = strain;
        settled.shift = slope.shift;
      }
    }
  }
}

/// Returns the mean edge strength in the middles of the modules around, including those of the quiet zone.
double ModuleGrid::edgeStrengthAround(CGPoint place, const Slope& slope) const {
  const int size = pixelsAcross(across_);
  const int column = static_cast<int>(std::lround(place.x));
  const int row = static_cast<int>(std::lround(place.y));
  int total = 0;
  int count = 0;
  for (int v = std::max(-1, row - kAround); v < std::min(across_ + 1, row + kAround); ++v) {
    for (int u = std::max(-1, column - kAround); u < std::min(across_ + 1, column + kAround); ++u, ++count) {
      const double right = u + 0.5 - place.x;
      const double down = v + 0.5 - place.y;
      const int x = static_cast<int>((u + 0.5 + kBorder) * kModule + slope.shift.x +
                                     right * slope.perColumn.x + down * slope.perRow.x);
      const int y = static_cast<int>((v + 0.5 + kBorder) * kModule + slope.shift.y +
                                     right * slope.perColumn.y + down * slope.perRow.y);
      if (x >= 0 && y >= 0 && x < size && y < size) {
        total += edgeStrength_.picture().row(y)[x];
      }
    }
  }
  return static_cast<double>(total) / count;
}

/// Interpolates between the four nodes around the place. Returns pixels of the straightened picture.
CGPoint ModuleGrid::onStraight(CGPoint place) const {
  const double x = std::clamp(place.x / nodeSpacing_, 0.0, nodesAcross_ - 1.001);
  const double y = std::clamp(place.y / nodeSpacing_, 0.0, nodesAcross_ - 1.001);
  const int column = static_cast<int>(x);
  const int row = static_cast<int>(y);
  const CGPoint above = between(node(column, row).shift, node(column + 1, row).shift, x - column);
  const CGPoint below = between(node(column, row + 1).shift, node(column + 1, row + 1).shift, x - column);
  const CGPoint shift = between(above, below, y - row);
  return sum({(place.x + kBorder) * kModule, (place.y + kBorder) * kModule}, shift);
}

Modules ModuleGrid::modules(bool lightOnDark) const {
  Modules modules(across_);
  const LumaPicture straight = straight_.picture();
  for (int v = 0; v < across_; ++v) {
    for (int u = 0; u < across_; ++u) {
      const CGPoint middle = onStraight({u + 0.5, v + 0.5});
      double luma = 0;
      for (const double y : {-1.5, -0.5, 0.5}) {
        for (const double x : {-1.5, -0.5, 0.5}) {
          luma += lumaAt(straight, sum(middle, {x, y})) / 9;
        }
      }
      const bool isLight = luma >= means_.picture().row(v + kBorder)[u + kBorder];
      modules.set(u, v, isLight == lightOnDark);
    }
  }
  return modules;
}

}  // namespace nivlo
