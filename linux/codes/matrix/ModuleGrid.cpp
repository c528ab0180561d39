#include "linux/codes/matrix/ModuleGrid.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include <libyuv/scale.h>

#include "linux/codes/matrix/NestedSquares.hpp"

namespace nivlo {

namespace {

// Pixels of a module in the straightened picture; modules of it around the square.
constexpr int kModule = 6;
constexpr int kBorder = 2;
// Pixels to each side, between which brightness is compared.
constexpr int kNear = 1;
// Modules from a node to the next, and to each side of a node that tell where it belongs.
constexpr int kNodeStep = 3;
constexpr int kAround = 3;
// Modules to each side, whose mean tells dark from light.
constexpr int kSurroundings = 4;
// Of a module, a node may lie from where it is expected, and when it is looked at again.
constexpr double kFirstRoom = 0.7;
constexpr double kLaterRoom = 0.35;
constexpr int kLaterRounds = 1;
// In which the room is gone through, each way.
constexpr int kSteps = 3;
// What unrest must be saved by a pixel's way from the expected place, squared.
constexpr double kStiffness = 1.2;
// Nodes to each side that tell where the next one is expected, and how much a slope of them is doubted.
constexpr int kNodesConsidered = 3;
constexpr double kFlatness = 0.1;

// Of QR codes (ISO/IEC 18004), in modules from the code's edge.
constexpr double kAlignmentMiddle = 6.5;
// How far the pattern may be from where a flat sheet would have it, how much of it must be as expected, and
// what the farthest place is worth less.
constexpr int kAlignmentReach = 6;
constexpr double kLeastLikeness = 0.7;
constexpr double kAlignmentDoubt = 0.2;
// Of its 25 modules together, so that noise on paper is no pattern.
constexpr double kLeastPatternContrast = 25;

CGPoint sum(CGPoint a, CGPoint b) { return {a.x + b.x, a.y + b.y}; }

CGPoint times(double factor, CGPoint a) { return {factor * a.x, factor * a.y}; }

CGPoint between(CGPoint a, CGPoint b, double part) {
  return {a.x + part * (b.x - a.x), a.y + part * (b.y - a.y)};
}

/// False also for what is nowhere, as a view of the horizon has it.
bool isWithin(double distance, CGPoint shift) {
  return std::abs(shift.x) <= distance && std::abs(shift.y) <= distance;
}

Quad withBorder(const Quad& outline, int modules) {
  const PerspectiveMap map(modules, modules, outline);
  const double before = -kBorder;
  const double behind = modules + kBorder;
  return map(Quad{{{before, before}, {behind, before}, {behind, behind}, {before, behind}}});
}

int modulesAcross(int modules) { return modules + 2 * kBorder; }
int pixelsAcross(int modules) { return modulesAcross(modules) * kModule; }

}  // namespace

ModuleGrid::ModuleGrid(const LumaPicture& picture, const Quad& outline, int modules)
    : across_(modules),
      nodesAcross_(modules / kNodeStep + 1),
      nodeSpacing_(static_cast<double>(modules) / (nodesAcross_ - 1)),
      toPicture_(pixelsAcross(modules), pixelsAcross(modules), withBorder(outline, modules)) {
  rectify(picture, withBorder(outline, modules), pixelsAcross(modules), pixelsAcross(modules), straight_);
  findMeans();
  findUnrest();
  for (int row = 0; row < nodesAcross_; ++row) {
    for (int column = 0; column < nodesAcross_; ++column) {
      nodes_.push_back({{column * nodeSpacing_, row * nodeSpacing_}, {}, false});
    }
  }
}

void ModuleGrid::findMeans() {
  const int across = modulesAcross(across_);
  LumaBuffer modules;
  modules.resize(across, across);
  const int side = pixelsAcross(across_);
  libyuv::ScalePlane(straight_.row(0), side, side, side, modules.row(0), across, across, across,
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

void ModuleGrid::findUnrest() {
  const int side = pixelsAcross(across_);
  unrest_.resize(side, side);
  std::fill_n(unrest_.row(0), static_cast<std::size_t>(side) * side, std::uint8_t{0});
  for (int y = kNear; y < side - kNear; ++y) {
    const std::uint8_t* above = straight_.row(y - kNear);
    const std::uint8_t* here = straight_.row(y);
    const std::uint8_t* below = straight_.row(y + kNear);
    std::uint8_t* out = unrest_.row(y);
    for (int x = kNear; x < side - kNear; ++x) {
      out[x] = static_cast<std::uint8_t>(
          (std::abs(here[x + kNear] - here[x - kNear]) + std::abs(below[x] - above[x])) / 2);
    }
  }
}

std::optional<ModuleGrid::Sighting> ModuleGrid::findAlignment(bool lightOnDark) const {
  const CGPoint place{across_ - kAlignmentMiddle, across_ - kAlignmentMiddle};
  const int side = pixelsAcross(across_);
  const int reach = std::min(kAlignmentReach, across_ / 5) * kModule;
  double best = kLeastLikeness;
  std::optional<Sighting> found;
  const LumaPicture straight = straight_.picture();
  const LumaPicture means = means_.picture();
  for (int dy = -reach; dy <= reach; dy += 2) {
    for (int dx = -reach; dx <= reach; dx += 2) {
      double likeness = 0;
      double contrast = 0;
      for (int v = -2; v <= 2; ++v) {
        for (int u = -2; u <= 2; ++u) {
          const int x = static_cast<int>((place.x + u + kBorder) * kModule) + dx;
          const int y = static_cast<int>((place.y + v + kBorder) * kModule) + dy;
          if (x < 0 || y < 0 || x >= side || y >= side) {
            continue;
          }
          const int difference = straight.row(y)[x] - means.row(y / kModule)[x / kModule];
          const bool isDark = std::max(std::abs(u), std::abs(v)) != 1;
          likeness += isDark == lightOnDark ? difference : -difference;
          contrast += std::abs(difference);
        }
      }
      const double value =
          likeness / (contrast + kLeastPatternContrast) - kAlignmentDoubt * std::hypot(dx, dy) / reach;
      if (value > best) {
        best = value;
        found = Sighting{place, toPicture_(CGPoint{(place.x + kBorder) * kModule + dx,
                                                   (place.y + kBorder) * kModule + dy})};
      }
    }
  }
  return found;
}

void ModuleGrid::follow(const std::vector<Sighting>& known) {
  struct Turn {
    double distance = HUGE_VAL;
    CGPoint shift;
    int column = 0;
    int row = 0;
  };
  std::vector<Turn> turns;
  for (int row = 0; row < nodesAcross_; ++row) {
    for (int column = 0; column < nodesAcross_; ++column) {
      Turn turn{HUGE_VAL, {}, column, row};
      for (const Sighting& sighting : known) {
        const double distance = distanceBetween(node(column, row).place, sighting.place);
        const CGPoint seen = toPicture_.inverse(sighting.inPicture);
        const CGPoint shift{seen.x - (sighting.place.x + kBorder) * kModule,
                            seen.y - (sighting.place.y + kBorder) * kModule};
        if (distance >= turn.distance || !isWithin(pixelsAcross(across_), shift)) {
          continue;
        }
        turn.distance = distance;
        turn.shift = shift;
      }
      turns.push_back(turn);
    }
  }
  std::sort(turns.begin(), turns.end(), [](const Turn& a, const Turn& b) { return a.distance < b.distance; });
  for (int round = 0; round <= kLaterRounds; ++round) {
    for (const auto& [distance, shift, column, row] : turns) {
      const bool isNear = round == 0 && distance <= kNodeStep;
      const bool isFirst = round == 0 && distance > kNodeStep;
      Slope expected = slopeAt(column, row);
      if (isNear) {
        expected.shift = shift;
      }
      settle(node(column, row), expected, isFirst ? kFirstRoom : kLaterRoom);
      node(column, row).isKnown = true;
    }
  }
}

/// As a plane through the known nodes around it has it, near ones most of all.
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
  // Cramer's rule, for the normal equations of the plane.
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

void ModuleGrid::settle(Node& settled, const Slope& expected, double room) const {
  double least = HUGE_VAL;
  const double step = room * kModule / kSteps;
  for (int y = -kSteps; y <= kSteps; ++y) {
    for (int x = -kSteps; x <= kSteps; ++x) {
      const CGPoint way{x * step, y * step};
      const Slope slope{sum(expected.shift, way), expected.perColumn, expected.perRow};
      const double strain = unrestAround(settled.place, slope) + kStiffness * (way.x * way.x + way.y * way.y);
      if (strain < least) {
        least = strain;
        settled.shift = slope.shift;
      }
    }
  }
}

/// The mean in the middles of the modules around; those of the quiet zone count as well.
double ModuleGrid::unrestAround(CGPoint place, const Slope& slope) const {
  const int side = pixelsAcross(across_);
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
      if (x >= 0 && y >= 0 && x < side && y < side) {
        total += unrest_.picture().row(y)[x];
      }
    }
  }
  return static_cast<double>(total) / count;
}

/// Between the four nodes around it.
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

std::vector<Reading> ModuleGrid::read(const Modules& modules, const Decoder& decoder) const {
  LumaBuffer drawing;
  draw(modules, drawing);
  std::vector<Reading> readings = decoder.read(drawing.picture());
  for (Reading& reading : readings) {
    for (CGPoint& corner : reading.outline) {
      corner = inPicture(placeShown(corner));
    }
  }
  return readings;
}

}  // namespace nivlo
