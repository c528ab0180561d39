// Why PipeWire offers no camera, and what helps.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace nivlo {

/// A camera as the kernel offers it.
struct VideoDevice {
  std::string path;
  bool mayBeUsed = true;  ///< false where this user lacks the permission; then it may be no camera at all
};

/// Returns the files "video*" of the folder behind which the kernel has a camera, in the order of their
/// names. Cameras are asked for what they can do, which does not switch them on.
std::vector<VideoDevice> videoDevices(const std::filesystem::path& folder = "/dev");

/// A cause, and what the user can do about it. Neither begins with a capital or ends in a full stop.
struct WhyNoCamera {
  std::string cause;
  std::string remedy;
};

/// Returns the most likely reason why PipeWire lists no camera.
WhyNoCamera whyNoCamera(bool daemonRuns, const std::vector<VideoDevice>& devices);

}  // namespace nivlo
