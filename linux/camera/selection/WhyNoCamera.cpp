#include "linux/camera/selection/WhyNoCamera.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <optional>
#include <system_error>

#include <fcntl.h>
#include <fmt/format.h>
#include <linux/videodev2.h>
#include <sys/ioctl.h>

#include "linux/handles/Descriptor.hpp"

namespace nivlo {

namespace {

// A webcam has further device files for its metadata, and the names of video decoders look like those of
// cameras.
bool takesPictures(int device) {
  v4l2_capability answer{};
  if (ioctl(device, VIDIOC_QUERYCAP, &answer) != 0) {
    return false;
  }
  const std::uint32_t abilities =
      (answer.capabilities & V4L2_CAP_DEVICE_CAPS) != 0 ? answer.device_caps : answer.capabilities;
  return (abilities & (V4L2_CAP_VIDEO_CAPTURE | V4L2_CAP_VIDEO_CAPTURE_MPLANE)) != 0;
}

std::optional<VideoDevice> cameraAt(const std::filesystem::path& path) {
  const Descriptor device(::open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
  if (device.get() < 0) {
    return errno == EACCES ? std::optional(VideoDevice{path.string(), false}) : std::nullopt;
  }
  return takesPictures(device.get()) ? std::optional(VideoDevice{path.string()}) : std::nullopt;
}

}  // namespace

std::vector<VideoDevice> videoDevices(const std::filesystem::path& folder) {
  std::vector<VideoDevice> devices;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    if (entry.path().filename().string().starts_with("video") && entry.is_character_file(error)) {
      if (auto camera = cameraAt(entry.path())) {
        devices.push_back(std::move(*camera));
      }
    }
  }
  std::ranges::sort(devices, {}, &VideoDevice::path);
  return devices;
}

WhyNoCamera whyNoCamera(bool daemonRuns, const std::vector<VideoDevice>& devices) {
  if (!daemonRuns) {
    return {"PipeWire is not running", "start it with 'systemctl --user start pipewire wireplumber'"};
  }
  if (devices.empty()) {
    return {"PipeWire has no camera", "plug one in, or choose something else with --source"};
  }
  const auto usable = std::ranges::find(devices, true, &VideoDevice::mayBeUsed);
  if (usable == devices.end()) {
    return {fmt::format("you lack the permission to use {}", devices.front().path),
            "log in at the computer itself, or have yourself added to the group video"};
  }
  return {fmt::format("PipeWire does not show {}", usable->path),
          "have it look again with 'systemctl --user restart wireplumber'"};
}

}  // namespace nivlo
