#include "linux/codes/Confirmation.hpp"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "platform/AVFoundation/AVMetadataObject.hpp"

namespace nivlo {

namespace {

// More than two rounds of the schedule, because often only one or two of its strategies can read a code.
constexpr long kPassesRemembered = 60;
constexpr std::size_t kStrategiesNeeded = 2;
constexpr std::size_t kFramesNeeded = 3;

bool isWeak(std::string_view type) {
  return type == AVMetadataObjectTypeUPCECode || type == AVMetadataObjectTypeEAN8Code ||
         type == AVMetadataObjectTypeEAN13Code || type == AVMetadataObjectTypeCode39Code ||
         type == AVMetadataObjectTypeCode39Mod43Code;
}

}  // namespace

std::vector<Reading> Confirmation::confirmed(std::vector<Reading> readings, const Pass& pass) {
  ++passes_;
  std::erase_if(readings, [&](const Reading& reading) {
    if (!isWeak(reading.type)) {
      return false;
    }
    return !counts(recorded(reading, pass));
  });
  std::erase_if(sightings_,
                [&](const Sighting& sighting) { return passes_ - sighting.lastPass > kPassesRemembered; });
  return readings;
}

Confirmation::Sighting& Confirmation::recorded(const Reading& reading, const Pass& pass) {
  auto known = std::find_if(sightings_.begin(), sightings_.end(), [&](const Sighting& sighting) {
    return sighting.reading.type == reading.type && sighting.reading.text == reading.text;
  });
  if (known == sightings_.end()) {
    known = sightings_.insert(known, {reading, {}, {}});
  }
  known->reading.outline = reading.outline;
  known->lastPass = passes_;
  known->isCertain = known->isCertain || reading.isCertain;
  known->strategies.insert(pass.strategy);
  known->frames.insert(pass.captureTime);
  return *known;
}

bool Confirmation::counts(const Sighting& sighting) const {
  if (sighting.isCertain) {
    return true;
  }
  if (sighting.strategies.size() < kStrategiesNeeded && sighting.frames.size() < kFramesNeeded) {
    return false;
  }
  return std::none_of(sightings_.begin(), sightings_.end(), [&](const Sighting& other) {
    return &other != &sighting && meet(other.reading, sighting.reading) &&
           (other.isCertain || sighting.strategies.size() <= other.strategies.size());
  });
}

}  // namespace nivlo
