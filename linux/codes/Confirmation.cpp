#include "linux/codes/Confirmation.hpp"

#include <algorithm>
#include <string_view>

#include "linux/codes/SymbologyTypes.hpp"

namespace nivlo {

namespace {

// About two seconds of looks: twice through the rotation, as often only one of its strategies reads a code.
constexpr long kLooksRemembered = 20;

bool isWeak(std::string_view type) {
  return type == symbology::kUPCE || type == symbology::kEAN8 || type == symbology::kEAN13 ||
         type == symbology::kCode39 || type == symbology::kCode39Mod43;
}

}  // namespace

std::vector<Reading> Confirmation::confirmed(std::vector<Reading> readings, const Look& look) {
  ++looks_;
  std::erase_if(readings, [&](const Reading& reading) { return !counts(reading, look); });
  std::erase_if(sightings_,
                [&](const Sighting& sighting) { return looks_ - sighting.lastLook > kLooksRemembered; });
  return readings;
}

bool Confirmation::counts(const Reading& reading, const Look& look) {
  if (!isWeak(reading.type) || reading.scanLines >= kManyScanLines) return true;
  if (reading.type == symbology::kUPCE) return false;
  const auto known = std::find_if(sightings_.begin(), sightings_.end(), [&](const Sighting& sighting) {
    return sighting.type == reading.type && sighting.text == reading.text;
  });
  if (known == sightings_.end()) {
    sightings_.push_back({reading.type, reading.text, look, looks_, false});
    return false;
  }
  known->lastLook = looks_;
  if (known->first != look) known->seenAgain = true;
  return known->seenAgain;
}

}  // namespace nivlo
