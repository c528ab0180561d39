// Counts how many photos Nivlo's reader reads, and for comparison the command-line tools of two libraries.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/linux/codes/Corpus.hpp"

namespace nivlo::bench {

/// Numbers of photos.
struct Recall {
  int photos = 0;
  int readAtOnce = 0;     ///< read by the first look
  int readInASecond = 0;  ///< read by at least one of ten looks
  int misread = 0;        ///< something else was read, perhaps besides the code
  int zxingReader = 0;
  int zxingReaderCrashes = 0;
  int zbarimg = 0;
  int zbarimgCrashes = 0;
};

/// Returns the results by type of code. Looks at each photo ten times, as a camera held still would show it,
/// and gives it to the tools as PNG. Uses all cores. Photos that cannot be loaded are reported on standard
/// error and not counted.
std::map<std::string, Recall> measureRecall(const std::vector<test::Photo>& photos);

}  // namespace nivlo::bench
