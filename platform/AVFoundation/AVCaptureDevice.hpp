// The cameras of the machine.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// The media type of cameras, and the only one there is.
inline constexpr std::string_view AVMediaTypeVideo = "vide";

/// A camera, as it was described when this object was made. The object does not open the camera: an
/// AVCaptureSession does, through an AVCaptureDeviceInput. It stays valid while the camera is unplugged.
class AVCaptureDevice {
 public:
  explicit AVCaptureDevice(CameraInfo info) : info_(std::move(info)) {}

  /// Returns the first camera that faces back, or else the first of all. Null when there is no camera, and
  /// for a media type other than AVMediaTypeVideo. Main thread only.
  static std::shared_ptr<AVCaptureDevice> defaultDeviceWithMediaType(std::string_view mediaType);
  /// Returns the cameras that are plugged in now, the preferred one first. Empty for a media type other than
  /// AVMediaTypeVideo. Main thread only.
  static std::vector<std::shared_ptr<AVCaptureDevice>> devicesWithMediaType(std::string_view mediaType);

  /// The way the camera faces; Unspecified for most webcams.
  AVCaptureDevicePosition position() const { return info_.position; }
  /// Returns whether the media type is AVMediaTypeVideo.
  bool hasMediaType(std::string_view mediaType) const { return mediaType == AVMediaTypeVideo; }
  /// Identifies the camera; a camera that is unplugged and plugged in again keeps it.
  const std::string& uniqueID() const { return info_.uniqueID; }
  /// The camera's name for people, for example "Integrated Camera".
  const std::string& localizedName() const { return info_.localizedName; }
  /// The geometry in which a session shows the camera's pictures: as the user wants them, and front cameras'
  /// mirrored, because people expect to see themselves as in a mirror.
  PictureTurn turn() const;

 private:
  CameraInfo info_;
};

}  // namespace nivlo
