// Holds back readings that may be wrong until they are seen again.
#pragma once

#include <string>
#include <vector>

#include "linux/codes/Reading.hpp"
#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

/// One look: which strategy read which frame. The same strategy on the same frame repeats its own mistakes
/// and confirms nothing.
struct Look {
  std::size_t strategy = 0;
  std::chrono::steady_clock::time_point captureTime;
  bool operator==(const Look&) const = default;
};

/// UPC-E, EAN-8, EAN-13 and Code 39 have a weak check digit or none. Read from fewer than kManyScanLines
/// lines, they count from the second look on that sees them; UPC-E then does not count at all. Everything
/// else counts at once.
class Confirmation {
 public:
  /// The readings of a look that count.
  std::vector<Reading> confirmed(std::vector<Reading> readings, const Look& look);

 private:
  struct Sighting {
    std::string type;
    std::string text;
    Look first;
    long lastLook = 0;
    bool seenAgain = false;
  };

  bool counts(const Reading& reading, const Look& look);

  std::vector<Sighting> sightings_;
  long looks_ = 0;
};

}  // namespace nivlo
