#include "linux/codes/AztecGridStrategy.hpp"

#include <algorithm>

#include <fmt/format.h>

#include "linux/codes/AztecRune.hpp"
#include "linux/codes/ModuleGrid.hpp"
#include "linux/codes/SymbologyTypes.hpp"

namespace nivlo {

namespace {

// More than a camera resolves seldom shows. Odd, as bullseyes are.
constexpr int kModulesFollowed = 65;

/// Where the corners of the bullseye are.
std::vector<ModuleGrid::Sighting> sightings(const Bullseye& bullseye) {
  const double near = (kModulesFollowed - bullseye.modules) / 2.0;
  const double far = (kModulesFollowed + bullseye.modules) / 2.0;
  const Quad corners{{{near, near}, {far, near}, {far, far}, {near, far}}};
  std::vector<ModuleGrid::Sighting> known;
  for (std::size_t i = 0; i < corners.size(); ++i) known.push_back({corners[i], bullseye.outline[i]});
  return known;
}

Reading readingOf(const AztecRune& rune, const ModuleGrid& grid) {
  const double near = (kModulesFollowed - kRuneModules) / 2.0;
  const double far = (kModulesFollowed + kRuneModules) / 2.0;
  Quad outline{{{near, near}, {far, near}, {far, far}, {near, far}}};
  for (CGPoint& corner : outline) corner = grid.inPicture(corner);
  std::rotate(outline.begin(), outline.begin() + rune.turns, outline.end());
  return {symbology::kAztec, fmt::format("{:03}", rune.number), outline, false};
}

}  // namespace

std::vector<Reading> AztecGridStrategy::read(Scene& scene) {
  std::vector<Reading> readings;
  for (const Bullseye& bullseye : scene.bullseyes()) {
    ModuleGrid grid(scene.picture(), squareAround(bullseye, kModulesFollowed), kModulesFollowed);
    grid.follow(sightings(bullseye));
    const Modules modules = grid.modules(bullseye.lightOnDark);
    draw(modules, drawing_);
    const auto rune = bullseye.modules < kRuneModules ? readAztecRune(modules) : std::nullopt;
    if (rune) readings.push_back(readingOf(*rune, grid));
    for (Reading& reading : decoder_.read(drawing_.picture())) {
      for (CGPoint& corner : reading.outline) corner = grid.inPicture(placeShown(corner));
      readings.push_back(std::move(reading));
    }
  }
  return readings;
}

double AztecGridStrategy::cost(Scene& scene) const {
  return static_cast<double>(scene.bullseyes().size()) * ModuleGrid::cost(kModulesFollowed);
}

}  // namespace nivlo
