// Holds back readings that may be wrong until they have been seen again.
#pragma once

#include <chrono>
#include <set>
#include <vector>

#include "linux/codes/decoders/Reading.hpp"

namespace nivlo {

/// One strategy's reading of one frame. A strategy repeats its mistakes on the same frame, and often on the
/// next frame of a still scene, so repetition by the same strategy confirms little.
struct Pass {
  const void* strategy = nullptr;  ///< tells strategies apart; never dereferenced
  std::chrono::steady_clock::time_point captureTime;
};

/// UPC-E, EAN-8, EAN-13 and Code 39 have a weak check digit or none. A reading of them counts once two
/// strategies, or three frames, have shown it, and more strategies than have read anything else at the same
/// place. A reading that is certain counts at once, and then no other at its place does. Readings of other
/// symbologies always count.
class Confirmation {
 public:
  /// Records the readings of a pass and returns those that count.
  std::vector<Reading> confirmed(std::vector<Reading> readings, const Pass& pass);

 private:
  struct Sighting {
    Reading reading;
    std::set<const void*> strategies;
    std::set<std::chrono::steady_clock::time_point> frames;
    long lastPass = 0;
    bool isCertain = false;
  };

  Sighting& recorded(const Reading& reading, const Pass& pass);
  bool counts(const Sighting& sighting) const;

  std::vector<Sighting> sightings_;
  long passes_ = 0;
};

}  // namespace nivlo
