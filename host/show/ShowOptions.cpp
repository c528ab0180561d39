#include "host/show/ShowOptions.hpp"

#include <fmt/format.h>

#include "platform/HostContract/WallpaperOptionKeys.hpp"

namespace nivlo {

std::string whyImpossible(const ShowOptions& options, const WallpaperBundle& bundle) {
  if (options.preset) {
    if (auto reason = bundle.whyNoPreset(*options.preset); !reason.empty()) {
      return reason;
    }
  }
  if (options.scans && !bundle.understands(kScansCodesKey)) {
    return fmt::format("the wallpaper {} does not read codes", bundle.name());
  }
  if (!options.camera) {
    return "";
  }
  if (!bundle.understands(kCameraPositionKey)) {
    return fmt::format("the wallpaper {} has no camera to choose", bundle.name());
  }
  const bool known = *options.camera == kCameraPositionBack || *options.camera == kCameraPositionFront;
  return known ? "" : fmt::format("there is no camera '{}'; choose back or front", *options.camera);
}

}  // namespace nivlo
