#include "linux/codes/AztecStrategy.hpp"

#include <utility>

#include "linux/codes/BullseyeFinder.hpp"
#include "linux/codes/Enhancement.hpp"
#include "linux/codes/PerspectiveMap.hpp"

namespace nivlo {

namespace {

/// From the middle of the code; more than a camera resolves seldom shows.
constexpr int kModulesAround = 32;

/// The square of that many modules around the bullseye's middle.
Quad surroundings(const Bullseye& bullseye) {
  const PerspectiveMap map(bullseye.modules, bullseye.modules, bullseye.outline);
  const double near = bullseye.modules / 2.0 - kModulesAround;
  const double far = bullseye.modules / 2.0 + kModulesAround;
  return map(Quad{{{near, near}, {far, near}, {far, far}, {near, far}}});
}

}  // namespace

AztecStrategy::AztecStrategy(int pixelsPerModule) : pixelsPerModule_(pixelsPerModule) {}

std::vector<Reading> AztecStrategy::read(Scene& scene) {
  std::vector<Reading> readings;
  const int side = 2 * kModulesAround * pixelsPerModule_;
  for (const Bullseye& bullseye : scene.bullseyes()) {
    const Quad region = surroundings(bullseye);
    rectify(scene.picture(), region, side, side, straight_);
    const auto enhancement = bullseye.lightOnDark ? Enhancement::Inverted : Enhancement::None;
    const LumaPicture view = enhanced(straight_.picture(), enhancement, negative_);
    const PerspectiveMap toPicture(side, side, region);
    for (Reading& reading : decoder_.read(view)) {
      reading.outline = toPicture(reading.outline);
      readings.push_back(std::move(reading));
    }
  }
  return readings;
}

double AztecStrategy::cost(Scene& scene) const {
  const double side = 2.0 * kModulesAround * pixelsPerModule_;
  return static_cast<double>(scene.bullseyes().size()) * side * side;
}

}  // namespace nivlo
