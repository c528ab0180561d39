// Assumes a side for cameras that do not state theirs.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// A wallpaper switches between a camera that faces back and one that faces front, but most webcams do not
/// say which way they face. As soon as there are two cameras, one that does not say it counts as facing back
/// if no other one does, and else as facing front if no other one does. It keeps that side while the others
/// come and go, so that a switch still leads back to it. A camera that is alone keeps its unspecified
/// position.
class AssumedSides {
 public:
  /// Sets the positions of such cameras in the list, as far as the sides are among `sides`. Those that offer
  /// only grey pictures are left out.
  void assume(std::vector<CameraInfo>& cameras, const std::vector<AVCaptureDevicePosition>& sides);

 private:
  std::map<std::string, AVCaptureDevicePosition> assumed_;  // by unique ID
};

}  // namespace nivlo
