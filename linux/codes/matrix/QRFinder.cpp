#include "linux/codes/matrix/QRFinder.hpp"

#include <algorithm>
#include <cmath>
#include <optional>

#include "linux/codes/matrix/NestedSquares.hpp"
#include "linux/codes/matrix/RunScan.hpp"

namespace nivlo {

namespace {

constexpr std::size_t kMostPlaces = 2;
constexpr std::size_t kMostSquares = 9;
// Bounds the work on a picture of noise.
constexpr int kMostCandidates = 24;
// Of a finder pattern through its middle, dark and light in turns, in modules.
constexpr std::array<int, 5> kRuns{1, 1, 3, 1, 1};
constexpr int kModules = 7;
constexpr double kNarrowestModule = 1.5;
constexpr int kMostModules = 177;
constexpr int kModulesStep = 4;

struct FinderSquare {
  Quad outline;
  CGPoint centre;
  bool lightOnDark = false;
};

bool areOfFinder(const int* edges) {
  const double module = (edges[kRuns.size()] - edges[0]) / static_cast<double>(kModules);
  if (module < kNarrowestModule) {
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

std::optional<FinderSquare> finderAt(const LumaPicture& picture, const RunsMiddle& middle) {
  const auto& [place, module, threshold] = middle;
  const auto outer = squareAround(picture, place, threshold, 3, 3.5 * module);
  const auto inner = outer ? squareAround(picture, place, threshold, 1, 1.5 * module) : std::nullopt;
  if (!inner || std::abs(std::sqrt(areaOf(*inner) / areaOf(*outer)) - 3.0 / kModules) > 0.1) {
    return std::nullopt;
  }
  return FinderSquare{*outer, centreOf(*outer), lumaAt(picture, place) > threshold};
}

std::vector<FinderSquare> findSquares(const LumaPicture& picture) {
  std::vector<FinderSquare> found;
  int candidates = 0;
  findRuns(picture, {kRuns.size(), kModules, areOfFinder}, [&](const RunsMiddle& middle) {
    const bool isKnown = std::any_of(found.begin(), found.end(), [&](const FinderSquare& other) {
      return distanceBetween(other.centre, middle.place) < 4 * middle.module;
    });
    if (isKnown) {
      return true;
    }
    if (const auto square = finderAt(picture, middle)) {
      found.push_back(*square);
    }
    return found.size() < kMostSquares && ++candidates < kMostCandidates;
  });
  return found;
}

/// How wide the square is in the direction of `to`.
double widthTowards(const FinderSquare& square, CGPoint to) {
  const double length = distanceBetween(square.centre, to);
  const CGPoint direction{(to.x - square.centre.x) / length, (to.y - square.centre.y) / length};
  double sum = 0;
  for (int i = 0; i < 4; ++i) {
    const CGPoint& a = square.outline[i];
    const CGPoint& b = square.outline[(i + 1) % 4];
    // The sides across the direction count for nothing, those along it in full.
    sum += std::abs((b.x - a.x) * direction.x + (b.y - a.y) * direction.y);
  }
  return sum / 2;
}

/// Modules from centre to centre.
double modulesBetween(const FinderSquare& first, const FinderSquare& second) {
  const double width = (widthTowards(first, second.centre) + widthTowards(second, first.centre)) / 2;
  return distanceBetween(first.centre, second.centre) / width * kModules;
}

CGPoint farthestIn(CGPoint direction, const Quad& quad) {
  const auto reach = [&](CGPoint point) { return point.x * direction.x + point.y * direction.y; };
  return *std::max_element(quad.begin(), quad.end(),
                           [&](CGPoint a, CGPoint b) { return reach(a) < reach(b); });
}

Line lineThrough(CGPoint first, CGPoint second) { return {first, {second.x - first.x, second.y - first.y}}; }

struct RatedPlace {
  QRPlace place;
  double flaw = 0;  ///< how far from a square
};

std::optional<RatedPlace> placeOf(const FinderSquare& corner, const FinderSquare& right,
                                  const FinderSquare& below) {
  if (corner.lightOnDark != right.lightOnDark || corner.lightOnDark != below.lightOnDark) {
    return std::nullopt;
  }
  const CGPoint a = corner.centre;
  const CGPoint b{right.centre.x - a.x, right.centre.y - a.y};
  const CGPoint c{below.centre.x - a.x, below.centre.y - a.y};
  const double turn = (b.x * c.y - b.y * c.x) / (std::hypot(b.x, b.y) * std::hypot(c.x, c.y));
  if (turn < 0.8) {
    return std::nullopt;
  }
  const double modulesAcross = modulesBetween(corner, right);
  const double modulesDown = modulesBetween(corner, below);
  const double flaw = std::abs(std::log(modulesAcross / modulesDown)) + 1 - turn;
  if (flaw > 0.35) {
    return std::nullopt;
  }
  const double centres = (modulesAcross + modulesDown) / 2;
  const int version = static_cast<int>(std::lround((centres + kModules - kLeastQRModules) / kModulesStep));
  const int modules = kLeastQRModules + kModulesStep * version;
  if (modules < kLeastQRModules || modules > kMostModules) {
    return std::nullopt;
  }
  const CGPoint across{b.x / std::hypot(b.x, b.y), b.y / std::hypot(b.x, b.y)};
  const CGPoint down{c.x / std::hypot(c.x, c.y), c.y / std::hypot(c.x, c.y)};
  const auto inOrder = [&](const FinderSquare& square) {
    const auto cornerTo = [&](int x, int y) {
      return farthestIn({x * across.x + y * down.x, x * across.y + y * down.y}, square.outline);
    };
    return Quad{cornerTo(-1, -1), cornerTo(1, -1), cornerTo(1, 1), cornerTo(-1, 1)};
  };
  const std::array<Quad, 3> squares{inOrder(corner), inOrder(right), inOrder(below)};
  const auto fourth =
      intersectionOf(lineThrough(squares[1][1], squares[1][2]), lineThrough(squares[2][3], squares[2][2]));
  if (!fourth) {
    return std::nullopt;
  }
  const Quad outline{squares[0][0], squares[1][1], *fourth, squares[2][3]};
  return RatedPlace{{squares, outline, modules, corner.lightOnDark}, flaw};
}

}  // namespace

std::vector<QRPlace> findQRPlaces(const LumaPicture& picture) {
  const std::vector<FinderSquare> squares = findSquares(picture);
  std::vector<RatedPlace> rated;
  for (const FinderSquare& corner : squares) {
    for (const FinderSquare& right : squares) {
      for (const FinderSquare& below : squares) {
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
  for (std::size_t i = 0; i < std::min(kMostPlaces, rated.size()); ++i) {
    places.push_back(rated[i].place);
  }
  return places;
}

}  // namespace nivlo
