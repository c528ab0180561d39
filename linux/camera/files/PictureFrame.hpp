// A still picture in the form that cameras deliver.
#pragma once

#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

/// The same picture in I420, full range, and no larger than 4K cameras deliver, so that whoever looks at it
/// ten times a second has little to convert. Takes RGB frames as loadImageFile returns them.
VideoFramePtr asCameraFrame(const VideoFrame& rgb);

}  // namespace nivlo
