// What may be asked of the running program.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include <glib.h>

#include "host/show/WallpaperShow.hpp"

namespace nivlo {

/// Carries out the methods of kControlInterface on a wallpaper. Main thread only.
class Controls {
 public:
  explicit Controls(std::function<void()> quit) : quit_(std::move(quit)) {}

  /// The wallpaper to ask from now on; with null every method fails.
  void attach(WallpaperShow* show);

  struct Answer {
    GVariant* values = nullptr;  ///< a floating tuple; null for an empty one
    std::string error;           ///< a sentence for people; empty on success
  };
  /// The arguments must have the types of kControlDescription.
  Answer call(std::string_view method, GVariant* arguments);

  /// Null while no wallpaper is attached.
  const WallpaperShow* show() const { return show_; }
  /// `changed` is called after each method that may have changed something.
  void observe(std::function<void()> changed) { changed_ = std::move(changed); }

 private:
  std::string perform(std::string_view method, GVariant* arguments);
  std::string change(const ShowOptions& changes);

  std::function<void()> quit_;
  std::function<void()> changed_ = [] {};
  WallpaperShow* show_ = nullptr;
};

}  // namespace nivlo
