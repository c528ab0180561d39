// How many photos are read, by Nivlo's reader and by the command line tools of the libraries that it stands
// on.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/linux/codes/Corpus.hpp"

namespace nivlo::bench {

struct Recall {
  int photos = 0;
  int readAtOnce = 0;     ///< in the first look
  int readInASecond = 0;  ///< in one of ten looks
  int misread = 0;        ///< photos in which anything else was read
  int zxingReader = 0;
  int zxingReaderCrashes = 0;
  int zbarimg = 0;
  int zbarimgCrashes = 0;
};

/// By type. Each photo is looked at ten times, as a camera held still would show it, and given to the tools
/// as PNG. Uses all cores. Photos that cannot be loaded are said so on standard error, and not counted.
std::map<std::string, Recall> measureRecall(const std::vector<test::Photo>& photos);

}  // namespace nivlo::bench
