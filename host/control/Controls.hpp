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
  /// The error of everything that is asked while no wallpaper is attached.
  static constexpr auto kNotShowing = "Nivlo is starting or ending; try again in a moment";

  /// Calls `quit` for the method Quit.
  explicit Controls(std::function<void()> quit) : quit_(std::move(quit)) {}

  /// Sets the wallpaper to act on; while it is null, every method fails. It must be replaced before it is
  /// destroyed.
  void attach(WallpaperShow* show) { show_ = show; }

  struct Answer {
    GVariant* values = nullptr;  ///< a floating tuple; null stands for an empty one
    std::string error;           ///< a sentence for users; empty on success
  };
  /// Carries out a method. `arguments` must have the types that kControlDescription gives it.
  Answer call(std::string_view method, GVariant* arguments);

  /// Returns the wallpaper, or null while none is attached.
  const WallpaperShow* show() const { return show_; }

 private:
  std::string perform(std::string_view method, GVariant* arguments);
  std::string showWallpaper(const std::string& nameOrPath, const ShowOptions& options);

  std::function<void()> quit_;
  WallpaperShow* show_ = nullptr;
};

}  // namespace nivlo
