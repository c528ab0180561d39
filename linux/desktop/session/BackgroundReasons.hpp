// Why the wallpaper is in the background.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace nivlo {

/// A set of reasons; any one of them is enough. Main thread only.
class BackgroundReasons {
 public:
  enum class Place { Foreground, Background };

  /// `moved` is called when the first reason comes and when the last one goes, and never within itself.
  explicit BackgroundReasons(std::function<void(Place)> moved) : moved_(std::move(moved)) {}

  /// When this returns, `moved` has been called for the change, if there was one.
  void set(std::string_view reason, bool holds);

 private:
  Place place() const;

  std::function<void(Place)> moved_;
  std::set<std::string, std::less<>> reasons_;
  Place place_ = Place::Foreground;  // as told last
  bool moving_ = false;
};

}  // namespace nivlo
