#include "linux/codes/strategies/QRGridStrategy.hpp"

#include <array>
#include <iterator>

#include "linux/codes/matrix/ModuleGrid.hpp"
#include "linux/codes/matrix/QRFinder.hpp"

namespace nivlo {

namespace {

// From the size that was judged, as it may be a step off.
constexpr std::array<int, 3> kSizesTried{0, 4, -4};
// Larger codes show too small in a picture, and take too long.
constexpr int kMostModulesFollowed = 73;
constexpr double kFinder = 7;

bool isFollowed(int modules) { return modules >= kLeastQRModules && modules <= kMostModulesFollowed; }

/// Where the finders' corners are.
std::vector<ModuleGrid::Sighting> sightings(const QRPlace& place, int modules) {
  const double far = modules - kFinder;
  const std::array<CGPoint, 3> origins{{{0, 0}, {far, 0}, {0, far}}};
  std::vector<ModuleGrid::Sighting> known;
  for (std::size_t i = 0; i < origins.size(); ++i) {
    const auto& [x, y] = origins[i];
    const Quad corners{{{x, y}, {x + kFinder, y}, {x + kFinder, y + kFinder}, {x, y + kFinder}}};
    for (std::size_t corner = 0; corner < corners.size(); ++corner) {
      known.push_back({corners[corner], place.squares[i][corner]});
    }
  }
  return known;
}

/// The outline with its fourth corner moved so that the pattern comes to lie about where it is seen.
Quad through(const ModuleGrid::Sighting& alignment, const ModuleGrid& grid, Quad outline, int modules) {
  const CGPoint expected = grid.inPicture(alignment.place);
  const double part = alignment.place.x * alignment.place.y / (1.0 * modules * modules);
  outline[2].x += (alignment.inPicture.x - expected.x) / part;
  outline[2].y += (alignment.inPicture.y - expected.y) / part;
  return outline;
}

}  // namespace

std::vector<Reading> QRGridStrategy::read(PictureFeatures& features) {
  std::vector<Reading> readings;
  for (const QRPlace& place : features.qrPlaces()) {
    for (const int change : kSizesTried) {
      const int modules = place.modules + change;
      if (!isFollowed(modules)) {
        continue;
      }
      std::vector<Reading> found = follow(features.picture(), place, modules);
      if (found.empty()) {
        continue;
      }
      readings.insert(readings.end(), std::make_move_iterator(found.begin()),
                      std::make_move_iterator(found.end()));
      break;
    }
  }
  return readings;
}

std::vector<Reading> QRGridStrategy::follow(const LumaPicture& picture, const QRPlace& place,
                                            int modules) const {
  ModuleGrid grid(picture, place.outline, modules);
  std::vector<ModuleGrid::Sighting> known = sightings(place, modules);
  if (const auto alignment = grid.findAlignment(place.lightOnDark)) {
    known.push_back(*alignment);
    grid = ModuleGrid(picture, through(*alignment, grid, place.outline, modules), modules);
  }
  grid.follow(known);
  return grid.read(grid.modules(place.lightOnDark), decoder_);
}

double QRGridStrategy::cost(PictureFeatures& features) const {
  double cost = 0;
  for (const QRPlace& place : features.qrPlaces()) {
    for (const int change : kSizesTried) {
      const int modules = place.modules + change;
      if (isFollowed(modules)) {
        cost += ModuleGrid::cost(modules);
      }
    }
  }
  return cost;
}

}  // namespace nivlo
