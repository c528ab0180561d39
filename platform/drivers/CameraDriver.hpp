// Where cameras come from.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

/// Which way a camera looks. The values are the platform's own.
enum class AVCaptureDevicePosition : long { Unspecified = 0, Back = 1, Front = 2 };

struct CameraInfo {
  std::string uniqueID;       ///< stays the same while the camera is unplugged and comes back
  std::string localizedName;  ///< for people
  AVCaptureDevicePosition position = AVCaptureDevicePosition::Unspecified;
};

/// An open camera. Destroying it closes the camera; no frame arrives once the destructor has returned. The
/// destructor may be called on any thread but the one that delivers the frames.
class CameraStream {
 public:
  virtual ~CameraStream() = default;
};

/// Receives frames on the driver's own thread, one at a time. It must be quick and must not close the stream.
using CameraFrameHandler = std::function<void(VideoFramePtr)>;

/// All cameras of one kind. Called on the main thread only.
class CameraDriver {
 public:
  virtual ~CameraDriver() = default;

  /// The cameras there are now, in a stable order, the preferred one first.
  virtual std::vector<CameraInfo> cameras() = 0;

  /// Opens a camera and lets its frames come; does not wait for the first. Null when the camera is refused:
  /// unknown, or taken for good. A camera that goes away later is picked up again, by its unique ID, when it
  /// returns: the stream stays, frames pause. It never changes over to another camera.
  virtual std::unique_ptr<CameraStream> open(const std::string& uniqueID, CameraFrameHandler onFrame) = 0;
};

}  // namespace nivlo
