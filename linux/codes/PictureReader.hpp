// Reads the codes in successive pictures of one scene.
#pragma once

#include <chrono>
#include <cstddef>
#include <vector>

#include "linux/codes/Confirmation.hpp"
#include "linux/codes/ReadingSchedule.hpp"
#include "linux/codes/picture/LumaPicture.hpp"
#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

/// Every call of read is one look. A look continues through the schedule where the last one stopped, until
/// its budget is spent: about what searching the whole picture once for matrix codes costs, 3 ms at 1280x720.
/// A look that finds a code also looks for its neighbours. The budget limits estimates, not time: ZXing
/// cannot be interrupted, and can take 0.7 s over a PDF417 that it fails to decode.
///
/// A matrix code's corners are where the decoder found them. A 1-D code's outline is traced along its bars,
/// so it ends early where the bars are hidden. Used by one thread at a time.
class PictureReader {
 public:
  /// Returns the codes found, the one that the user points at last. May throw.
  std::vector<DecodedCode> read(const LumaPicture& picture,
                                std::chrono::steady_clock::time_point captureTime);

 private:
  ReadingSchedule schedule_ = makeReadingSchedule();
  std::size_t next_ = 0;  ///< index into the rotation
  Confirmation confirmation_;
};

}  // namespace nivlo
