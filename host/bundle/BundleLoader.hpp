// Opens wallpaper bundles.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "host/bundle/WallpaperBundle.hpp"

namespace nivlo {

/// Returns the folder of Nivlo's own wallpaper: beside the program, or where it was installed.
std::filesystem::path defaultBundlePath();

/// Opens a bundle, Nivlo's own one for an empty path, and asks its class (see WallpaperBundle::ask) if it was
/// built for this host. Returns null for anything else, with the cause and the remedy in `*error`. The
/// drivers must be installed before. Main thread only.
std::shared_ptr<const WallpaperBundle> openWallpaperBundle(const std::filesystem::path& path,
                                                           std::string* error);

}  // namespace nivlo
