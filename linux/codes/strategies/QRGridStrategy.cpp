#include "linux/codes/strategies/QRGridStrategy.hpp"

#include <array>
#include <cstddef>

#include "linux/codes/matrix/ModuleGrid.hpp"
#include "linux/codes/matrix/QRFinder.hpp"
#include "linux/codes/picture/Quad.hpp"
#include "linux/codes/strategies/GridReading.hpp"

namespace nivlo {

namespace {

// Modules by which the sizes tried differ from the estimated one, which may be one step off.
constexpr std::array<int, 3> kCorrections{0, 4, -4};
// Larger codes show too small in a camera's picture, and take too long.
constexpr int kMaxModulesFollowed = 73;

std::vector<int> sizesOf(const QRPlace& place) {
  std::vector<int> sizes;
  for (const int correction : kCorrections) {
    const int modules = place.modules + correction;
    if (modules >= kMinQRModules && modules <= kMaxModulesFollowed) {
      sizes.push_back(modules);
    }
  }
  return sizes;
}

/// The corners of the finder patterns.
std::vector<ModuleGrid::Anchor> anchorsOf(const QRPlace& place, int modules) {
  const double far = modules - kFinderModules;
  const std::array<CGPoint, 3> origins{{{0, 0}, {far, 0}, {0, far}}};
  std::vector<ModuleGrid::Anchor> anchors;
  for (std::size_t i = 0; i < origins.size(); ++i) {
    const auto& [x, y] = origins[i];
    const Quad corners{
        {{x, y}, {x + kFinderModules, y}, {x + kFinderModules, y + kFinderModules}, {x, y + kFinderModules}}};
    for (std::size_t corner = 0; corner < corners.size(); ++corner) {
      anchors.push_back({corners[corner], place.finders[i][corner]});
    }
  }
  return anchors;
}

/// Returns the outline with its fourth corner moved so that the alignment pattern comes to lie about where
/// the picture shows it.
Quad outlineThrough(const ModuleGrid::Anchor& alignment, const ModuleGrid& grid, Quad outline, int modules) {
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
    appendFirst(
        sizesOf(place), [&](int modules) { return follow(features.picture(), place, modules); }, readings);
  }
  return readings;
}

std::vector<Reading> QRGridStrategy::follow(const LumaPicture& picture, const QRPlace& place,
                                            int modules) const {
  ModuleGrid grid(picture, place.outline, modules);
  std::vector<ModuleGrid::Anchor> anchors = anchorsOf(place, modules);
  if (const auto alignment = grid.findAlignment(place.lightOnDark)) {
    anchors.push_back(*alignment);
    grid = ModuleGrid(picture, outlineThrough(*alignment, grid, place.outline, modules), modules);
  }
  grid.follow(anchors);
  return readGrid(grid, grid.modules(place.lightOnDark), decoder_);
}

double QRGridStrategy::cost(PictureFeatures& features) const {
  double cost = 0;
  for (const QRPlace& place : features.qrPlaces()) {
    cost += costOfGrids(sizesOf(place));
  }
  return cost;
}

}  // namespace nivlo
