#include "linux/codes/matrix/BullseyeFinder.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

#include "linux/codes/matrix/NestedSquares.hpp"
#include "linux/codes/matrix/RunScan.hpp"
#include "linux/codes/picture/PerspectiveMap.hpp"

namespace nivlo {

namespace {

constexpr std::size_t kMaxBullseyes = 3;
// Bounds the work on a picture of noise.
constexpr int kMaxBullseyeCandidates = 64;
// Runs of one module each across the middle of a compact code's bullseye. Full codes have more.
constexpr int kBullseyeRuns = 7;
constexpr double kMinRunWidth = 1.5;

/// Returns whether the edges bound runs of about equal width. Ink that has spread widens dark runs at the
/// cost of light ones, so each run is compared together with its neighbour.
bool areEven(const int* edges) {
  const int width = edges[kBullseyeRuns] - edges[0];
  if (width < kMinRunWidth * kBullseyeRuns) {
    return false;
  }
  const int tolerance = std::max(kBullseyeRuns, width / 2);
  for (int i = 0; i + 1 < kBullseyeRuns; ++i) {
    if (std::abs((edges[i + 2] - edges[i]) * kBullseyeRuns - 2 * width) > tolerance) {
      return false;
    }
  }
  return true;
}

/// Measures the square whose outline rays from the centre cross as their `crossing`th edge, which is
/// 2 * `crossing` - 1 modules wide.
std::optional<Quad> squareAt(const LumaPicture& picture, const PatternCentre& centre, int crossing) {
  return squareAround(picture, centre.place, centre.threshold, crossing, centre.module * (crossing - 0.5));
}

std::optional<Bullseye> bullseyeAt(const LumaPicture& picture, const PatternCentre& centre) {
  const bool light = lumaAt(picture, centre.place) > centre.threshold;
  const auto inner = squareAt(picture, centre, 4);
  const auto innermost = inner ? squareAt(picture, centre, 2) : std::nullopt;
  if (!innermost || std::abs(std::sqrt(areaOf(*innermost) / areaOf(*inner)) - 3.0 / 7) > 0.1) {
    return std::nullopt;
  }
  Bullseye bullseye{*inner, 7, light};
  // Full codes have two more squares. The outermost tells the perspective best.
  const auto outer = squareAt(picture, centre, 6);
  const double ratio = outer ? std::sqrt(areaOf(*outer) / areaOf(*inner)) : 0;
  if (std::abs(ratio - 11.0 / 7) < 0.12) {
    bullseye = {*outer, 11, light};
  }
  return bullseye;
}

}  // namespace

Quad surroundings(const Bullseye& bullseye, double modules) {
  const PerspectiveMap map(bullseye.modules, bullseye.modules, bullseye.outline);
  const double near = (bullseye.modules - modules) / 2;
  const double far = (bullseye.modules + modules) / 2;
  return map(Quad{{{near, near}, {far, near}, {far, far}, {near, far}}});
}

std::vector<Bullseye> findBullseyes(const LumaPicture& picture) {
  std::vector<Bullseye> found;
  int candidates = 0;
  findRuns(picture, {kBullseyeRuns, kBullseyeRuns, areEven}, [&](const PatternCentre& centre) {
    const bool isKnown = std::any_of(found.begin(), found.end(), [&](const Bullseye& other) {
      return distanceBetween(centreOf(other.outline), centre.place) < 4 * centre.module;
    });
    if (isKnown) {
      return true;
    }
    if (const auto bullseye = bullseyeAt(picture, centre)) {
      found.push_back(*bullseye);
    }
    return found.size() < kMaxBullseyes && ++candidates < kMaxBullseyeCandidates;
  });
  return found;
}

}  // namespace nivlo
