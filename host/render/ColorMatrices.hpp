// Coefficients for the conversion from YUV to RGB.
#pragma once

#include <libyuv.h>

#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

/// The constants that libyuv's conversions take. The colours come out within 2 of 255 of what ITU-R BT.601
/// and BT.709 give in exact arithmetic. Never null, and valid until the program ends. Callable from any
/// thread.
const libyuv::YuvConstants* colorMatrix(ColorMatrix matrix, ColorRange range);

}  // namespace nivlo
