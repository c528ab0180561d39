// Holds back readings that may be wrong until they are seen again.
#pragma once

#include <chrono>
#include <set>
#include <vector>

#include "linux/codes/decoders/Reading.hpp"

namespace nivlo {

/// Who read, and what: a strategy repeats its mistakes on the same frame, and often on the next one of a
/// still scene.
struct Look {
  const void* strategy = nullptr;
  std::chrono::steady_clock::time_point captureTime;
};

/// UPC-E, EAN-8, EAN-13 and Code 39 have a weak check digit or none. They count once two strategies have read
/// the same, or one in three frames, and more than have read anything else at the same place. One that is
/// certain counts at once, as everything else does, and no other at its place.
class Confirmation {
 public:
  /// The readings of a look that count.
  std::vector<Reading> confirmed(std::vector<Reading> readings, const Look& look);

 private:
  struct Sighting {
    Reading reading;
    std::set<const void*> strategies;
    std::set<std::chrono::steady_clock::time_point> frames;
    long lastLook = 0;
    bool isCertain = false;
  };

  Sighting& noted(const Reading& reading, const Look& look);
  bool counts(const Sighting& sighting) const;

  std::vector<Sighting> sightings_;
  long looks_ = 0;
};

}  // namespace nivlo
