// All codes of one still picture.
#pragma once

#include <vector>

#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

/// Looks at one frame several times (see runScan for how often) and returns the union of what the looks
/// found, in the order in which it was found.
std::vector<DecodedCode> scanPicture(CodeReader& reader, const VideoFrame& frame);

}  // namespace nivlo
