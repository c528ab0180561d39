#include "linux/camera/selection/AssumedSides.hpp"

#include <algorithm>

namespace nivlo {

void AssumedSides::assume(std::vector<CameraInfo>& cameras,
                          const std::vector<AVCaptureDevicePosition>& sides) {
  const auto isUnknown = [](const CameraInfo& camera) {
    return camera.position == AVCaptureDevicePosition::Unspecified && !camera.onlyGrey;
  };
  for (auto& camera : cameras) {
    const auto known = assumed_.find(camera.uniqueID);
    if (isUnknown(camera) && known != assumed_.end()) {
      camera.position = known->second;
    }
  }
  if (std::ranges::count(cameras, false, &CameraInfo::onlyGrey) < 2) {
    return;
  }
  for (const auto side : sides) {
    const auto unknown = std::ranges::find_if(cameras, isUnknown);
    if (unknown != cameras.end() && std::ranges::count(cameras, side, &CameraInfo::position) == 0) {
      unknown->position = side;
      assumed_[unknown->uniqueID] = side;
    }
  }
}

}  // namespace nivlo
