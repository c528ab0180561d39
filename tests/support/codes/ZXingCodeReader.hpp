// A code reader without a process of its own.
#pragma once

#include <memory>

#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

/// Returns a driver whose readers work in the calling thread (see PictureReader), for measuring and testing
/// what is read. A picture that crashes ZXing ends this process, and one that keeps ZXing busy blocks the
/// thread.
std::unique_ptr<CodeReaderDriver> makeZXingCodeReaderDriver();

}  // namespace nivlo
