// A frame on its way through a capture session.
#pragma once

#include "platform/AVFoundation/PictureGeometry.hpp"
#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

struct CaptureFrame {
  VideoFramePtr picture;
  PictureGeometry geometry;
};

/// Takes frames from a running session, on the camera driver's thread. It must keep no more than the newest.
class CaptureFrameConsumer {
 public:
  virtual ~CaptureFrameConsumer() = default;
  virtual void consume(const CaptureFrame& frame) = 0;
};

}  // namespace nivlo
