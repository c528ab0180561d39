// The driver that finds and opens cameras.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

/// The way a camera faces: away from the user, or towards the user. The values are fixed, as wallpapers use
/// them as numbers.
enum class AVCaptureDevicePosition : long { Unspecified = 0, Back = 1, Front = 2 };

/// A camera that can be opened.
struct CameraInfo {
  std::string uniqueID;       ///< the same again when the camera is unplugged and plugged in
  std::string localizedName;  ///< its name for people
  AVCaptureDevicePosition position = AVCaptureDevicePosition::Unspecified;
  bool onlyGrey = false;  ///< offers no colours, as cameras for recognising faces do
  bool connected = true;  ///< false for a camera that was chosen but is not plugged in
  PictureTurn turn;       ///< the user's change to how its pictures are usually shown
};

/// An open camera. Destroying it closes the camera; the handler is not called after the destructor has
/// returned. Destroy it on any thread but the one that calls the handler.
class CameraStream {
 public:
  virtual ~CameraStream() = default;
};

/// Receives the frames of an open camera, on a thread of the driver's own and one at a time. It must be quick
/// and must not destroy the stream.
using CameraFrameHandler = std::function<void(VideoFramePtr)>;

/// All cameras of one kind. Main thread only.
class CameraDriver {
 public:
  virtual ~CameraDriver() = default;

  /// Returns the cameras that can be opened now, in an order that stays the same, the preferred one first.
  virtual std::vector<CameraInfo> cameras() = 0;

  /// Opens a camera without waiting for its first frame. Null when there is no such camera, or when it cannot
  /// be opened. A camera that is unplugged later delivers no frames until it is plugged in again; the stream
  /// then finds it by its unique ID, and never changes to another camera.
  virtual std::unique_ptr<CameraStream> open(const std::string& uniqueID, CameraFrameHandler onFrame) = 0;
};

}  // namespace nivlo
