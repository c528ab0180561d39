// The code reader on ZXing.
#pragma once

#include <memory>

#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

/// Its readers work in the calling thread and in this process. Each look uses another strategy on the whole
/// frame or a part of it, about 10 ms at 1280x720; one that finds a code looks once more for its neighbours.
/// ZXing alone has no bound: it can take 0.7 s over a PDF417 that it fails to decode. Matrix codes' corners
/// are those that were found; a 1-D code's outline is followed along its bars, which may end it early where
/// they are hidden. The last code of a look is the one that the user points at.
std::unique_ptr<CodeReaderDriver> makeZXingCodeReaderDriver();

}  // namespace nivlo
