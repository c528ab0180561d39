// A wallpaper whose faults stay its own.
#pragma once

#include <memory>
#include <string>

#include "platform/HostContract/WallpaperClass.hpp"

namespace nivlo {

/// Passes every operation on to a wallpaper. What the wallpaper throws is logged with the operation's name
/// and goes no further. Main thread only.
class GuardedWallpaper : public Wallpaper {
 public:
  /// Returns null where there is no wallpaper, or it has no view; the cause then stands in `*error`. `name`
  /// is what the log calls it.
  static std::shared_ptr<Wallpaper> guard(std::shared_ptr<Wallpaper> wallpaper, std::string name,
                                          std::string* error);

  void setWallpaperOptions(const NSDictionary& options) override;
  void setWallpaperVariant(long variant) override;
  /// The view that the wallpaper had at first; never null.
  std::shared_ptr<UIView> view() override { return view_; }
  void setAnimating(bool animating) override;

 private:
  GuardedWallpaper(std::shared_ptr<Wallpaper> wallpaper, std::shared_ptr<UIView> view, std::string name);

  template <typename Operation>
  void attempt(const char* operation, const Operation& perform);

  std::shared_ptr<Wallpaper> wallpaper_;
  std::shared_ptr<UIView> view_;
  std::string name_;
};

}  // namespace nivlo
