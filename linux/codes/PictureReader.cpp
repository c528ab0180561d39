#include "linux/codes/PictureReader.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

#include "linux/codes/bars/BarOutline.hpp"
#include "linux/codes/decoders/Reading.hpp"
#include "linux/codes/strategies/PictureFeatures.hpp"
#include "linux/codes/strategies/ReadingStrategy.hpp"

namespace nivlo {

using std::chrono::steady_clock;

namespace {

// Budget per pixel of the picture; the whole schedule then takes about a second's looks.
constexpr double kBudgetPerPixel = 1.25;
// Small pictures get the budget for searching 960x540 pixels, so each look reads them more thoroughly.
constexpr double kMinBudget = 960 * 540;

/// Replaces a 1-D code's outline by one traced in the picture. Of the outline that was read only the middle
/// line is used, because the rendition may have been squashed along the bars.
void traceBars(Reading& reading, const LumaPicture& picture) {
  if (!reading.isLinear) {
    return;
  }
  const auto& [topLeft, topRight, bottomRight, bottomLeft] = reading.outline;
  reading.outline = barOutline(picture, {(topLeft.x + bottomLeft.x) / 2, (topLeft.y + bottomLeft.y) / 2},
                               {(topRight.x + bottomRight.x) / 2, (topRight.y + bottomRight.y) / 2});
}

}  // namespace

std::vector<DecodedCode> PictureReader::read(const LumaPicture& picture,
                                             steady_clock::time_point captureTime) {
  PictureFeatures features(picture);
  std::vector<Reading> found;
  bool seenAny = false;
  const auto readWith = [&](ReadingStrategy& strategy) {
    std::vector<Reading> readings = withoutDuplicates(strategy.read(features));
    seenAny = seenAny || !readings.empty();
    readings = confirmation_.confirmed(std::move(readings), {&strategy, captureTime});
    for (Reading& reading : readings) {
      traceBars(reading, picture);
    }
    found.insert(found.end(), std::make_move_iterator(readings.begin()),
                 std::make_move_iterator(readings.end()));
  };

  const double budget = std::max(kMinBudget, kBudgetPerPixel * picture.width * picture.height);
  double spent = 0;
  for (std::size_t step = 0; step < schedule_.rotation.size() && found.empty() && spent < budget; ++step) {
    ReadingStrategy& strategy = *schedule_.rotation[next_];
    spent += strategy.cost(features);
    if (step > 0 && spent > budget) {
      break;
    }
    readWith(strategy);
    next_ = (next_ + 1) % schedule_.rotation.size();
  }
  // Which code the user points at is known only once all codes in the picture are, so a look that finds one
  // searches for the others too. These passes may also confirm what was found.
  if (seenAny) {
    for (ReadingStrategy* strategy : schedule_.mostComplete) {
      readWith(*strategy);
    }
  }
  found = withoutDuplicates(std::move(found));
  sortPointedAtLast(found, picture.width, picture.height);
  std::vector<DecodedCode> codes;
  codes.reserve(found.size());
  for (Reading& reading : found) {
    codes.push_back(
        {std::move(reading.type), std::move(reading.text), {reading.outline.begin(), reading.outline.end()}});
  }
  return codes;
}

}  // namespace nivlo
