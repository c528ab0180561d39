// A frame as a capture session hands it out.
#pragma once

#include "platform/AVFoundation/PictureGeometry.hpp"
#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

/// A picture and how to show it.
struct CaptureFrame {
  VideoFramePtr picture;     ///< null for an empty layer
  PictureGeometry geometry;  ///< meaningless without a picture
};

/// Takes the frames of a running session.
class CaptureFrameConsumer {
 public:
  virtual ~CaptureFrameConsumer() = default;
  /// Called for each frame on the camera's thread, which waits meanwhile. Keep the newest frame at most: the
  /// camera has few buffers, and those that are held cannot be filled again.
  virtual void consume(const CaptureFrame& frame) = 0;
};

}  // namespace nivlo
