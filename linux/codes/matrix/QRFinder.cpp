#include "linux/codes/matrix/QRFinder.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>

#include "linux/codes/matrix/NestedSquares.hpp"
#include "linux/codes/matrix/RunScan.hpp"

namespace nivlo {

namespace {

constexpr std::size_t kMaxPlaces = 2;
constexpr std::size_t kMaxFinders = 9;
// Bounds the work on a picture of noise.
constexpr int kMaxCandidates = 24;
// Modules of the alternately dark and light runs across the middle of a finder pattern.
constexpr std::array<int, 5> kRuns{1, 1, 3, 1, 1};
constexpr double kMinModule = 1.5;
constexpr int kMaxQRModules = 177;
constexpr int kModulesStep = 4;
// Sine of the angle between the code's edges at its corner.
constexpr double kMinSine = 0.8;
// Difference in length of these edges, as a logarithm, plus what the sine lacks of 1.
constexpr double kMaxFlaw = 0.35;

struct Finder {
  Quad outline;
  CGPoint centre;
  bool lightOnDark = false;
};

/// Returns whether the edges bound runs as wide as those of a finder pattern.
bool areFinderRuns(const int* edges) {
  const double module = (edges[kRuns.size()] - edges[0]) / static_cast<double>(kFinderModules);
  if (module < kMinModule) {
    return false;
  }
  for (std::size_t i = 0; i < kRuns.size(); ++i) {
    const int width = edges[i + 1] - edges[i];
    if (std::abs(width - kRuns[i] * module) > 0.3 * module * kRuns[i] + 1) {
      return false;
    }
  }
  return true;
}

std::optional<Finder> finderAt(const LumaPicture& picture, const PatternCentre& centre) {
  const auto& [place, module, threshold] = centre;
  const auto outer = squareAround(picture, place, threshold, 3, 3.5 * module);
  const auto inner = outer ? squareAround(picture, place, threshold, 1, 1.5 * module) : std::nullopt;
  if (!inner || std::abs(std::sqrt(areaOf(*inner) / areaOf(*outer)) - 3.0 / kFinderModules) > 0.1) {
    return std::nullopt;
  }
  return Finder{*outer, centreOf(*outer), lumaAt(picture, place) > threshold};
}

std::vector<Finder> findFinders(const LumaPicture& picture) {
  std::vector<Finder> found;
  int candidates = 0;
  findRuns(picture, {kRuns.size(), kFinderModules, areFinderRuns}, [&](const PatternCentre& centre) {
    const bool isKnown = std::any_of(found.begin(), found.end(), [&](const Finder& other) {
      return distanceBetween(other.centre, centre.place) < 4 * centre.module;
    });
    if (isKnown) {
      return true;
    }
    if (const auto finder = finderAt(picture, centre)) {
      found.push_back(*finder);
    }
    return found.size() < kMaxFinders && ++candidates < kMaxCandidates;
  });
  return found;
}

/// Returns the width of the finder in the direction of `to`.
double widthTowards(const Finder& finder, CGPoint to) {
  const double length = distanceBetween(finder.centre, to);
  const CGPoint direction{(to.x - finder.centre.x) / length, (to.y - finder.centre.y) / length};
  double sum = 0;
  for (int i = 0; i < 4; ++i) {
    const CGPoint& a = finder.outline[i];
    const CGPoint& b = finder.outline[(i + 1) % 4];
    // An edge counts by its length in that direction: in full if parallel to it, not at all if across.
    sum += std::abs((b.x - a.x) * direction.x + (b.y - a.y) * direction.y);
  }
  return sum / 2;
}

/// Returns the distance between the centres, in modules.
double modulesBetween(const Finder& first, const Finder& second) {
  const double width = (widthTowards(first, second.centre) + widthTowards(second, first.centre)) / 2;
  return distanceBetween(first.centre, second.centre) / width * kFinderModules;
}

CGPoint farthestIn(CGPoint direction, const Quad& quad) {
  const auto reach = [&](CGPoint point) { return point.x * direction.x + point.y * direction.y; };
  return *std::max_element(quad.begin(), quad.end(),
                           [&](CGPoint a, CGPoint b) { return reach(a) < reach(b); });
}

Line lineThrough(CGPoint first, CGPoint second) { return {first, {second.x - first.x, second.y - first.y}}; }

struct RatedPlace {
  QRPlace place;
  double flaw = 0;  ///< deviation from a square; 0 for a perfect one
};

/// Returns the width in modules of a QR code whose finders' centres are that far apart, or nothing if no
/// version is about as large.
std::optional<int> modulesFor(double betweenCentres) {
  const double steps = (betweenCentres + kFinderModules - kMinQRModules) / kModulesStep;
  const int modules = kMinQRModules + kModulesStep * static_cast<int>(std::lround(steps));
  if (modules < kMinQRModules || modules > kMaxQRModules) {
    return std::nullopt;
  }
  return modules;
}

/// Returns the corners of the finder's outline in the order in which they lie in the code, whose edges have
/// these directions.
Quad inOrder(const Quad& outline, CGPoint across, CGPoint down) {
  const auto cornerTowards = [&](int x, int y) {
    return farthestIn({x * across.x + y * down.x, x * across.y + y * down.y}, outline);
  };
  return {cornerTowards(-1, -1), cornerTowards(1, -1), cornerTowards(1, 1), cornerTowards(-1, 1)};
}

/// Returns the place of the code that has these finders in its corners, or nothing if they do not fit
/// together.
std::optional<RatedPlace> placeOf(const Finder& corner, const Finder& right, const Finder& below) {
  if (corner.lightOnDark != right.lightOnDark || corner.lightOnDark != below.lightOnDark) {
    return std::nullopt;
  }
  const CGPoint a = corner.centre;
  const CGPoint b{right.centre.x - a.x, right.centre.y - a.y};
  const CGPoint c{below.centre.x - a.x, below.centre.y - a.y};
  const double sine = (b.x * c.y - b.y * c.x) / (std::hypot(b.x, b.y) * std::hypot(c.x, c.y));
  if (sine < kMinSine) {
    return std::nullopt;
  }
  const double modulesAcross = modulesBetween(corner, right);
  const double modulesDown = modulesBetween(corner, below);
  const double flaw = std::abs(std::log(modulesAcross / modulesDown)) + 1 - sine;
  if (flaw > kMaxFlaw) {
    return std::nullopt;
  }
  const auto modules = modulesFor((modulesAcross + modulesDown) / 2);
  if (!modules) {
    return std::nullopt;
  }
  const CGPoint across{b.x / std::hypot(b.x, b.y), b.y / std::hypot(b.x, b.y)};
  const CGPoint down{c.x / std::hypot(c.x, c.y), c.y / std::hypot(c.x, c.y)};
  const std::array<Quad, 3> finders{inOrder(corner.outline, across, down),
                                    inOrder(right.outline, across, down),
                                    inOrder(below.outline, across, down)};
  const auto fourth =
      intersectionOf(lineThrough(finders[1][1], finders[1][2]), lineThrough(finders[2][3], finders[2][2]));
  if (!fourth) {
    return std::nullopt;
  }
  const Quad outline{finders[0][0], finders[1][1], *fourth, finders[2][3]};
  return RatedPlace{{finders, outline, *modules, corner.lightOnDark}, flaw};
}

}  // namespace

std::vector<QRPlace> findQRPlaces(const LumaPicture& picture) {
  const std::vector<Finder> finders = findFinders(picture);
  std::vector<RatedPlace> rated;
  for (const Finder& corner : finders) {
    for (const Finder& right : finders) {
      for (const Finder& below : finders) {
        if (&corner == &right || &corner == &below || &right == &below) {
          continue;
        }
        if (const auto place = placeOf(corner, right, below)) {
          rated.push_back(*place);
        }
      }
    }
  }
  std::sort(rated.begin(), rated.end(),
            [](const RatedPlace& first, const RatedPlace& second) { return first.flaw < second.flaw; });
  std::vector<QRPlace> places;
  for (std::size_t i = 0; i < std::min(kMaxPlaces, rated.size()); ++i) {
    places.push_back(rated[i].place);
  }
  return places;
}

}  // namespace nivlo
