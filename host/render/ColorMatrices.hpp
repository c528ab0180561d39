// The coefficients by which YUV becomes RGB.
#pragma once

#include <libyuv.h>

#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

/// Within 2 of 255 of ITU-R BT.601 or BT.709 in full arithmetic. Valid for the whole program.
const libyuv::YuvConstants* colorMatrix(ColorMatrix matrix, ColorRange range);

}  // namespace nivlo
