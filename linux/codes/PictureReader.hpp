// Reads the codes in successive pictures of one scene.
#pragma once

#include <chrono>
#include <vector>

#include "linux/codes/Confirmation.hpp"
#include "linux/codes/ReadingSchedule.hpp"
#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

/// Each read goes on through the strategies of the schedule, as far as its budget goes: about what looking
/// once for matrix codes in the whole picture costs, 3 ms at 1280x720. One that finds a code looks for its
/// neighbours as well. ZXing alone has no bound: it can take 0.7 s over a PDF417 that it fails to decode.
/// Matrix codes' corners are those that were found; a 1-D code's outline is followed along its bars, which
/// may end it early where they are hidden. Used by one thread at a time.
class PictureReader {
 public:
  /// The codes found, the one that the user points at last. May throw.
  std::vector<DecodedCode> read(const LumaPicture& picture,
                                std::chrono::steady_clock::time_point captureTime);

 private:
  ReadingSchedule schedule_ = makeReadingSchedule();
  std::size_t next_ = 0;
  Confirmation confirmation_;
};

}  // namespace nivlo
