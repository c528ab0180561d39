#include "linux/codes/decoders/Reading.hpp"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

#include "platform/AVFoundation/AVMetadataObject.hpp"

namespace nivlo {

namespace {

// A reflection, for example, can cut a 1-D code's outline short. This much slack still joins the parts.
constexpr double kSlack = 1.1;
// Distances from the centre are rounded to this fraction of the picture's diagonal before they are compared.
constexpr double kNearnessStep = 0.05;

bool sameCode(const Reading& first, const Reading& second) {
  return first.type == second.type && first.text == second.text && meet(first, second);
}

}  // namespace

bool meet(const Reading& first, const Reading& second) {
  return overlap(scaledAboutCentre(first.outline, kSlack), second.outline);
}

std::vector<Reading> withoutDuplicates(std::vector<Reading> readings) {
  std::vector<Reading> result;
  for (Reading& reading : readings) {
    const auto known = std::find_if(result.begin(), result.end(),
                                    [&](const Reading& other) { return sameCode(other, reading); });
    if (known == result.end()) {
      result.push_back(std::move(reading));
    }
  }
  const std::vector<Reading> all = result;
  std::erase_if(result, [&](const Reading& reading) {
    return reading.type == AVMetadataObjectTypeUPCECode &&
           std::any_of(all.begin(), all.end(), [&](const Reading& other) {
             return other.type == AVMetadataObjectTypeEAN13Code && meet(other, reading);
           });
  });
  return result;
}

void sortPointedAtLast(std::vector<Reading>& readings, int pictureWidth, int pictureHeight) {
  const double step = kNearnessStep * std::hypot(pictureWidth, pictureHeight);
  const auto rank = [&](const Reading& reading) {
    const CGPoint centre = centreOf(reading.outline);
    const double distance = std::hypot(centre.x - pictureWidth / 2.0, centre.y - pictureHeight / 2.0);
    return std::tuple(-std::round(distance / step), areaOf(reading.outline));
  };
  std::stable_sort(readings.begin(), readings.end(),
                   [&](const Reading& first, const Reading& second) { return rank(first) < rank(second); });
}

}  // namespace nivlo
