// A still picture as a camera would deliver it.
#pragma once

#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

/// Converts a frame as loadImageFile() returns it to I420, BT.601 in full range, and scales it down to at
/// most 3840 pixels along its longer edge, so that those who process it ten times a second have little to do.
VideoFramePtr asCameraFrame(const VideoFrame& rgb);

}  // namespace nivlo
