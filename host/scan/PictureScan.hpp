// All the codes in one still picture.
#pragma once

#include <vector>

#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

/// Looks at one frame several times, as a live camera's frames are looked at, and returns all codes that any
/// look found, in the order in which they were found. There are up to ten looks, about as many as a live
/// camera gets in a second; once a code is found, three looks in a row that find nothing new end the scan. A
/// 1-D code that is hard to read counts only if two looks find it.
std::vector<DecodedCode> scanPicture(CodeReader& reader, const VideoFrame& frame);

}  // namespace nivlo
