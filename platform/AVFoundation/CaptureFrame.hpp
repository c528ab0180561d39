// A frame as a capture session hands it out.
#pragma once

#include <memory>

#include "platform/AVFoundation/AVCaptureDevice.hpp"
#include "platform/AVFoundation/PictureGeometry.hpp"
#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

/// A picture and how to show it.
struct CaptureFrame {
  VideoFramePtr picture;     ///< null for an empty layer
  PictureGeometry geometry;  ///< meaningless without a picture
  /// The camera that the picture is from; null where that does not matter.
  std::shared_ptr<const AVCaptureDevice> device = nullptr;
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
