// Opens wallpaper bundles.
#pragma once

#include <filesystem>
#include <string>

#include "platform/HostContract/WallpaperClass.hpp"

namespace nivlo {

/// The bundle that belongs to this program: beside it, or where it was installed.
std::filesystem::path defaultBundlePath();

/// The principal class of the bundle, once it is sure that it fits this host; it stays valid until the
/// program ends. Null, with the cause and the remedy in `*error`, for anything else. The drivers must be
/// installed before. Main thread only.
const WallpaperClass* loadWallpaperClass(const std::filesystem::path& bundlePath, std::string* error);

}  // namespace nivlo
