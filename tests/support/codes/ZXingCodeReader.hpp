// The code reader on ZXing, in this process.
#pragma once

#include <memory>

#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

/// Its readers work in the calling thread (see PictureReader). For measuring and testing what is read: a
/// picture that ends ZXing ends this process, and one that keeps ZXing busy keeps the thread.
std::unique_ptr<CodeReaderDriver> makeZXingCodeReaderDriver();

}  // namespace nivlo
