// The reasons for the wallpaper to be in the background.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace nivlo {

/// Keeps the reasons that hold now. While there is at least one, the wallpaper is in the background. Main
/// thread only.
class BackgroundReasons {
 public:
  enum class Place { Foreground, Background };

  /// `moved` is called when the first reason comes and when the last one goes. Reasons that change during
  /// such a call lead to another call after it.
  explicit BackgroundReasons(std::function<void(Place)> moved) : moved_(std::move(moved)) {}

  /// Says whether a reason holds. If that moves the wallpaper, `moved` has been called when this returns.
  void set(std::string_view reason, bool holds);

 private:
  Place place() const;

  std::function<void(Place)> moved_;
  std::set<std::string, std::less<>> reasons_;
  Place place_ = Place::Foreground;  ///< as `moved` was last told
  bool moving_ = false;
};

}  // namespace nivlo
