#include "linux/codes/PictureReader.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

#include "linux/codes/bars/BarOutline.hpp"

namespace nivlo {

using std::chrono::steady_clock;

namespace {

// With which the schedule's strategies take about a second of looks.
constexpr double kBudgetOfPixel = 1.25;
// Pictures much below this size, 960x540, are read as thoroughly as the time for one of this size allows.
constexpr double kLeastBudget = 960 * 540;

/// The outline as it was read may be of a view that was squeezed along the bars.
void followBars(Reading& reading, const LumaPicture& picture) {
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
      followBars(reading, picture);
    }
    found.insert(found.end(), std::make_move_iterator(readings.begin()),
                 std::make_move_iterator(readings.end()));
  };

  const double budget = std::max(kLeastBudget, kBudgetOfPixel * picture.width * picture.height);
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
  // Which of the codes in view is pointed at shows only when all of them are known, so a look that finds one
  // looks for the others as well. It may also confirm what was found.
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
