// Chooses a wallpaper for now and for later.
#pragma once

#include <filesystem>
#include <string>

namespace nivlo {

struct WallpaperChoice {
  std::filesystem::path bundle;  ///< an absolute path; empty where no Nivlo is running
  int preset = 0;                ///< counted from 1; 0 where no Nivlo is running
};

/// Returns what the running Nivlo shows.
WallpaperChoice shownWallpaper();

/// Makes the running Nivlo show a wallpaper, and the desktop start Nivlo with it from now on. Returns a
/// sentence for users if the running Nivlo refuses, or if none is running; else an empty text.
std::string chooseWallpaper(const WallpaperChoice& choice);

}  // namespace nivlo
