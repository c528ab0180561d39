// What a wallpaper bundle and its host agree on.
//
// A bundle is a folder NAME.bundle with an Info.plist that names, under NSPrincipalClass, the wallpaper's
// class and, under CFBundleExecutable, the shared object that holds it. The shared object exports one
// WallpaperClass for each wallpaper in it, by NIVLO_EXPORT_WALLPAPER. The host opens it at run time and
// touches nothing else in it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Foundation/NSDictionary.hpp"
#include "platform/UIKit/UIImage.hpp"
#include "platform/UIKit/UIView.hpp"

namespace nivlo {

/// Raised whenever WallpaperClass or Wallpaper changes: a host loads only bundles of its own version.
inline constexpr std::uint32_t kWallpaperContractVersion = 1;
/// First in the table, so that a symbol which is no WallpaperClass is told from one.
inline constexpr std::uint32_t kWallpaperClassMark = 0x4e49564c;

/// A wallpaper on the screen. The host calls every operation on the main thread, in any order, any number of
/// times.
class Wallpaper {
 public:
  virtual ~Wallpaper() = default;
  /// Applies a set of options; what a key means is the wallpaper's business.
  virtual void setWallpaperOptions(const NSDictionary& options) = 0;
  virtual void setWallpaperVariant(long variant) = 0;
  /// What is to be shown.
  virtual std::shared_ptr<UIView> view() = 0;
  /// Switched on while the wallpaper can be seen.
  virtual void setAnimating(bool animating) = 0;
};

/// The class of a wallpaper: what can be asked without an instance. The two numbers come first and never
/// move.
struct WallpaperClass {
  std::uint32_t mark;
  std::uint32_t contractVersion;
  const char* name;
  std::string (*identifier)();
  bool (*colorChangesSignificantly)();
  std::vector<NSDictionary> (*presetWallpaperOptions)();
  std::string (*thumbnailImageName)();
  /// The picture that stands for a set of options; null where there is none.
  std::shared_ptr<UIImage> (*thumbnailImageForOptions)(const NSDictionary& options);
  /// Names a large picture of the wallpaper in the bundle.
  std::string (*representativeThumbnailImageName)();
  /// Null when the wallpaper cannot be built for the frame.
  std::shared_ptr<Wallpaper> (*initWithFrame)(CGRect frame);
};

/// The exported symbol of a class is this followed by the class's name.
inline constexpr const char* kWallpaperClassSymbolPrefix = "nivloWallpaperClass_";

}  // namespace nivlo

/// Inside namespace nivlo: exports a class that has the operations of WallpaperClass as static members and
/// derives from Wallpaper.
#define NIVLO_EXPORT_WALLPAPER(Class)                                                                       \
  extern "C" __attribute__((visibility("default")))                                                         \
  const nivlo::WallpaperClass nivloWallpaperClass_##Class = {                                               \
      nivlo::kWallpaperClassMark,                                                                           \
      nivlo::kWallpaperContractVersion,                                                                     \
      #Class,                                                                                               \
      [] { return Class::identifier(); },                                                                   \
      [] { return Class::colorChangesSignificantly(); },                                                    \
      [] { return Class::presetWallpaperOptions(); },                                                       \
      [] { return Class::thumbnailImageName(); },                                                           \
      [](const nivlo::NSDictionary& options) { return Class::thumbnailImageForOptions(options); },          \
      [] { return Class::representativeThumbnailImageName(); },                                             \
      [](nivlo::CGRect frame) -> std::shared_ptr<nivlo::Wallpaper> { return Class::initWithFrame(frame); }, \
  }
