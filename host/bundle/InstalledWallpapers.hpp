// The wallpapers that are installed on this machine.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "host/bundle/WallpaperBundle.hpp"

namespace nivlo {

/// Returns the folders that wallpapers are installed in, the preferred one first: the program's own, the
/// installation's, the user's ($XDG_DATA_HOME/nivlo/wallpapers) and those of the system ($XDG_DATA_DIRS).
/// They need not exist.
std::vector<std::filesystem::path> wallpaperFolders();

/// Returns the bundles in these folders, in their order and sorted by name within each. Of several bundles
/// with the same name, whatever its letters' case, the first one counts.
std::vector<std::filesystem::path> installedBundles(
    const std::vector<std::filesystem::path>& folders = wallpaperFolders());

/// Returns the bundle that `nameOrPath` stands for: the installed wallpaper that users or the file system
/// know by this name, in letters of any case, else the path itself, made absolute. A path with a slash in it
/// need not exist. Returns an empty path, with a sentence for users in `*error`, for anything else.
std::filesystem::path findBundle(const std::string& nameOrPath, std::string* error);

/// An installed wallpaper, whether or not it can be used.
struct InstalledWallpaper {
  std::filesystem::path path;
  std::shared_ptr<const WallpaperBundle> bundle;  ///< null if it cannot be used
  std::string error;                              ///< a sentence for users, empty if it can
};

/// Opens all installed bundles (see openWallpaperBundle). Main thread only.
std::vector<InstalledWallpaper> openInstalledWallpapers();

}  // namespace nivlo
