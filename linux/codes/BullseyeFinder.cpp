#include "linux/codes/BullseyeFinder.hpp"

#include <algorithm>
#include <cmath>
#include <optional>

#include "linux/codes/LocalThreshold.hpp"
#include "linux/codes/NestedSquares.hpp"
#include "linux/codes/PerspectiveMap.hpp"

namespace nivlo {

namespace {

constexpr std::size_t kMostBullseyes = 3;
// Bounds the work on a picture of noise.
constexpr int kMostCandidates = 64;
// Across the middle, alternately dark and light, each a module wide; larger codes have more.
constexpr int kRuns = 7;
constexpr double kNarrowestRun = 1.5;
constexpr int kRowsLookedAt = 360;

/// Whether the edges bound runs of about equal width. Ink that ran makes dark runs wider and light ones
/// narrower, so a run is compared together with its neighbour.
bool areEven(const int* edges) {
  const int width = edges[kRuns] - edges[0];
  if (width < kNarrowestRun * kRuns) return false;
  const int room = std::max(kRuns, width / 2);
  for (int i = 0; i + 1 < kRuns; ++i) {
    if (std::abs((edges[i + 2] - edges[i]) * kRuns - 2 * width) > room) return false;
  }
  return true;
}

struct Candidate {
  CGPoint centre;
  double module = 0;
};

/// The square whose edge every ray from the centre crosses as its `edge`th.
std::optional<Quad> squareAt(const LumaPicture& picture, const Candidate& candidate, double threshold,
                             int edge) {
  return squareAround(picture, candidate.centre, threshold, edge, candidate.module * (edge - 0.5));
}

std::optional<Bullseye> bullseyeAt(const LumaPicture& picture, const Candidate& candidate, int threshold) {
  const bool light = lumaAt(picture, candidate.centre) > threshold;
  const auto inner = squareAt(picture, candidate, threshold, 4);
  const auto innermost = inner ? squareAt(picture, candidate, threshold, 2) : std::nullopt;
  if (!innermost || std::abs(std::sqrt(areaOf(*innermost) / areaOf(*inner)) - 3.0 / 7) > 0.1)
    return std::nullopt;
  Bullseye bullseye{*inner, 7, light};
  // Codes of more than four layers have two squares more, which tell the perspective better.
  const auto outer = squareAt(picture, candidate, threshold, 6);
  const double ratio = outer ? std::sqrt(areaOf(*outer) / areaOf(*inner)) : 0;
  if (std::abs(ratio - 11.0 / 7) < 0.12) bullseye = {*outer, 11, light};
  return bullseye;
}

}  // namespace

Quad squareAround(const Bullseye& bullseye, double modules) {
  const PerspectiveMap map(bullseye.modules, bullseye.modules, bullseye.outline);
  const double near = (bullseye.modules - modules) / 2;
  const double far = (bullseye.modules + modules) / 2;
  return map(Quad{{{near, near}, {far, near}, {far, far}, {near, far}}});
}

std::vector<Bullseye> findBullseyes(const LumaPicture& picture) {
  std::vector<Bullseye> found;
  const LocalThreshold threshold(picture);
  const int step = std::max(1, picture.height / kRowsLookedAt);
  int candidates = 0;
  std::vector<int> edges;
  std::vector<int> upright;
  for (int y = step / 2; y < picture.height; y += step) {
    threshold.findEdges(y, edges);
    for (std::size_t i = 0; i + kRuns < edges.size(); ++i) {
      if (!areEven(&edges[i])) continue;
      const Candidate candidate{{(edges[i + 3] + edges[i + 4] - 1) / 2.0, static_cast<double>(y)},
                                static_cast<double>(edges[i + kRuns] - edges[i]) / kRuns};
      const bool known = std::any_of(found.begin(), found.end(), [&](const Bullseye& other) {
        return distanceBetween(centreOf(other.outline), candidate.centre) < 4 * candidate.module;
      });
      const int limit = threshold.at(static_cast<int>(candidate.centre.x), y);
      const int farthest = static_cast<int>(candidate.module * kRuns);
      if (known || !threshold.findEdgesAbout(candidate.centre, farthest, kRuns + 1, upright) ||
          !areEven(upright.data()))
        continue;
      if (const auto bullseye = bullseyeAt(picture, candidate, limit)) found.push_back(*bullseye);
      if (found.size() == kMostBullseyes || ++candidates == kMostCandidates) return found;
    }
  }
  return found;
}

}  // namespace nivlo
