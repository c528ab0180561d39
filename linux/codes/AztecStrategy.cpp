#include "linux/codes/AztecStrategy.hpp"

#include <utility>

#include "linux/codes/BullseyeFinder.hpp"
#include "linux/codes/Enhancement.hpp"
#include "linux/codes/PerspectiveMap.hpp"

namespace nivlo {

namespace {

// More than a camera resolves seldom shows.
constexpr int kModulesAcross = 64;

}  // namespace

AztecStrategy::AztecStrategy(int pixelsPerModule) : pixelsPerModule_(pixelsPerModule) {}

std::vector<Reading> AztecStrategy::read(Scene& scene) {
  std::vector<Reading> readings;
  const int side = kModulesAcross * pixelsPerModule_;
  for (const Bullseye& bullseye : scene.bullseyes()) {
    const Quad region = squareAround(bullseye, kModulesAcross);
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
  const double side = 1.0 * kModulesAcross * pixelsPerModule_;
  return static_cast<double>(scene.bullseyes().size()) * side * side;
}

}  // namespace nivlo
