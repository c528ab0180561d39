// Carries out what others ask of the running program.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include <glib.h>

#include "host/show/WallpaperShow.hpp"

namespace nivlo {

/// The methods of kControlInterface, applied to a wallpaper. Main thread only.
class Controls {
 public:
  /// Calls `quit` for the method Quit.
  explicit Controls(std::function<void()> quit) : quit_(std::move(quit)) {}

  /// Sets the wallpaper to act on; while it is null, every method fails. It must be replaced before it is
  /// destroyed.
  void attach(WallpaperShow* show);

  struct Answer {
    GVariant* values = nullptr;  ///< a floating tuple; null stands for an empty one
    std::string error;           ///< a sentence for users; empty on success
  };
  /// Carries out a method. `arguments` must have the types that kControlDescription gives it.
  Answer call(std::string_view method, GVariant* arguments);

  /// Returns the wallpaper, or null while none is attached.
  const WallpaperShow* show() const { return show_; }
  /// Calls `changed` after each method that may have changed something, and when the wallpaper is replaced.
  /// It takes the place of an earlier observer.
  void observe(std::function<void()> changed) { changed_ = std::move(changed); }

 private:
  std::string perform(std::string_view method, GVariant* arguments);
  std::string showWallpaper(const std::string& nameOrPath, const ShowOptions& options);

  std::function<void()> quit_;
  std::function<void()> changed_ = [] {};
  WallpaperShow* show_ = nullptr;
};

}  // namespace nivlo
