#include "linux/codes/matrix/BullseyeFinder.hpp"

#include <algorithm>
#include <cmath>
#include <optional>

#include "linux/codes/matrix/NestedSquares.hpp"
#include "linux/codes/matrix/RunScan.hpp"
#include "linux/codes/picture/PerspectiveMap.hpp"

namespace nivlo {

namespace {

constexpr std::size_t kMostBullseyes = 3;
// Bounds the work on a picture of noise.
constexpr int kMostCandidates = 64;
// Across the middle, alternately dark and light, each a module wide; larger codes have more.
constexpr int kRuns = 7;
constexpr double kNarrowestRun = 1.5;

/// Whether the edges bound runs of about equal width. Ink that ran makes dark runs wider and light ones
/// narrower, so a run is compared together with its neighbour.
bool areEven(const int* edges) {
  const int width = edges[kRuns] - edges[0];
  if (width < kNarrowestRun * kRuns) {
    return false;
  }
  const int room = std::max(kRuns, width / 2);
  for (int i = 0; i + 1 < kRuns; ++i) {
    if (std::abs((edges[i + 2] - edges[i]) * kRuns - 2 * width) > room) {
      return false;
    }
  }
  return true;
}

/// The square whose edge every ray from the centre crosses as its `edge`th.
std::optional<Quad> squareAt(const LumaPicture& picture, const RunsMiddle& middle, int edge) {
  return squareAround(picture, middle.place, middle.threshold, edge, middle.module * (edge - 0.5));
}

std::optional<Bullseye> bullseyeAt(const LumaPicture& picture, const RunsMiddle& middle) {
  const bool light = lumaAt(picture, middle.place) > middle.threshold;
  const auto inner = squareAt(picture, middle, 4);
  const auto innermost = inner ? squareAt(picture, middle, 2) : std::nullopt;
  if (!innermost || std::abs(std::sqrt(areaOf(*innermost) / areaOf(*inner)) - 3.0 / 7) > 0.1) {
    return std::nullopt;
  }
  Bullseye bullseye{*inner, 7, light};
  // Codes of more than four layers have two squares more, which tell the perspective better.
  const auto outer = squareAt(picture, middle, 6);
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
  findRuns(picture, {kRuns, kRuns, areEven}, [&](const RunsMiddle& middle) {
    const bool isKnown = std::any_of(found.begin(), found.end(), [&](const Bullseye& other) {
      return distanceBetween(centreOf(other.outline), middle.place) < 4 * middle.module;
    });
    if (isKnown) {
      return true;
    }
    if (const auto bullseye = bullseyeAt(picture, middle)) {
      found.push_back(*bullseye);
    }
    return found.size() < kMostBullseyes && ++candidates < kMostCandidates;
  });
  return found;
}

}  // namespace nivlo
