// The user's choices about a wallpaper.
#pragma once

#include <optional>
#include <string>

#include "host/bundle/WallpaperBundle.hpp"

namespace nivlo {

/// A preset, and what should differ from it. What is absent stays as it is; at the beginning, that is the
/// first preset.
struct ShowOptions {
  std::optional<int> preset;          ///< counted from 1
  std::optional<bool> scans;          ///< whether to offer the codes that the camera sees
  std::optional<std::string> camera;  ///< kCameraPositionBack or kCameraPositionFront
};

/// Returns why the wallpaper cannot be shown like that, as a sentence for users; empty when it can.
std::string whyImpossible(const ShowOptions& options, const WallpaperBundle& bundle);

}  // namespace nivlo
