// Why PipeWire offers no camera, and what helps.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace nivlo {

/// A camera as the kernel offers it.
struct VideoDevice {
  std::string path;
  bool mayBeUsed =
      true;  ///< false when this user lacks the permission; it may then be something other than a camera
};

/// Returns the cameras behind the device files "video*" of the folder, ordered by path. Each file is asked
/// what it can do, which does not switch a camera on.
std::vector<VideoDevice> videoDevices(const std::filesystem::path& folder = "/dev");

/// A cause, and what the user can do about it. Neither begins with a capital or ends in a full stop.
struct WhyNoCamera {
  std::string cause;
  std::string remedy;
};

/// Returns the most likely reason why PipeWire lists no camera.
WhyNoCamera whyNoCamera(bool daemonRuns, const std::vector<VideoDevice>& devices);

}  // namespace nivlo
