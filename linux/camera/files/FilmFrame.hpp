// Frames from what GStreamer decoded.
#pragma once

#include <gst/gst.h>

#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

/// Makes a frame of a sample in the format I420 or NV12 without copying: the frame keeps the sample's buffer,
/// but not the sample. Null when the sample holds no such picture.
VideoFramePtr frameFromSample(GstSample* sample, int rotation);

/// The rotation (see VideoFrame::rotation) that the film's tags ask for, as far as they have passed this pad;
/// 0 without such a tag. Mirroring is ignored.
int rotationFromTags(GstPad* pad);

}  // namespace nivlo
