// Frames that GStreamer decoded.
#pragma once

#include <gst/gst.h>

#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

/// The picture in a sample of format I420 or NV12, without a copy: the frame holds the sample's buffer. Null
/// when the sample holds no such picture.
VideoFramePtr frameFromSample(GstSample* sample, int rotation);

/// The turn (see VideoFrame::rotation) that the tags which have passed the pad ask for, 0 without any.
/// Mirroring is ignored.
int rotationFromTags(GstPad* pad);

}  // namespace nivlo
