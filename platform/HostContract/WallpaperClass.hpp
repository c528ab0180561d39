// The contract between a wallpaper and its host; docs/wallpapers.md shows how to write, build and install a
// wallpaper.
//
// A wallpaper is a folder NAME.bundle with an Info.plist (see WallpaperInfoKeys.hpp), a shared object and
// resources. The shared object exports a WallpaperClass for its class, which NIVLO_EXPORT_WALLPAPER writes.
// The host opens the shared object at run time, never closes it, and touches nothing else in it.
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

/// Changes whenever WallpaperClass or Wallpaper does. A host refuses bundles of every version but its own.
inline constexpr std::uint32_t kWallpaperContractVersion = 2;
/// Begins every WallpaperClass, so that a host recognises a symbol that is something else.
inline constexpr std::uint32_t kWallpaperClassMark = 0x4e49564c;

/// A wallpaper on the screen.
///
/// The host calls every operation on the main thread, and may call any of them in any order, any number of
/// times. No operation should throw: the host logs what is thrown, and goes on as if the operation had done
/// nothing.
class Wallpaper {
 public:
  /// The host destroys a wallpaper when it ends and when the user chooses another one, after
  /// setAnimating(false).
  virtual ~Wallpaper() = default;
  /// Applies a set of options: one of the presets, in which the user may have changed values under the keys
  /// of WallpaperOptionKeys.hpp. Comes before the wallpaper is first shown, and again at each change.
  virtual void setWallpaperOptions(const NSDictionary& options) = 0;
  /// Tells the desktop's colour scheme, kWallpaperVariantLight or kWallpaperVariantDark: before the wallpaper
  /// is first shown, and at each change. A wallpaper that looks the same in both ignores it.
  virtual void setWallpaperVariant(long variant) = 0;
  /// The view to show, the same one each time. A wallpaper that derives from UIView returns itself. The host
  /// refuses to show a wallpaper that returns null.
  virtual std::shared_ptr<UIView> view() = 0;
  /// True when the wallpaper becomes visible and false when it is hidden, the user pauses it or the session
  /// is locked. A wallpaper draws, and holds a camera, only while it is animating.
  virtual void setAnimating(bool animating) = 0;
};

/// The questions that the host can ask without an instance. The host calls every operation on the main
/// thread; a process that only lists wallpapers never builds one. The mark and the version never move, so
/// that every version of the contract can tell the others.
struct WallpaperClass {
  std::uint32_t mark;
  std::uint32_t contractVersion;
  const char* name;  ///< the class's name, as Info.plist has it
  /// Names the wallpaper to programs; stays the same for ever.
  std::string (*identifier)();
  /// Returns whether what lies over the wallpaper must stay legible on any colour.
  bool (*colorChangesSignificantly)();
  /// The sets of options that the user chooses among, the first one being the default. A wallpaper that
  /// answers none has one preset, without options.
  std::vector<NSDictionary> (*presetWallpaperOptions)();
  /// Describes the preset in a few words without a full stop ("the back camera, codes are
  /// offered"). Where it is empty, the host writes "preset 2".
  std::string (*descriptionForOptions)(const NSDictionary& options);
  /// The wallpaper's small picture: a PNG resource, named without its extension. Empty where there is none.
  std::string (*thumbnailImageName)();
  /// The picture of a preset that names none under kWallpaperThumbnailNameKey. Null where there is none.
  std::shared_ptr<UIImage> (*thumbnailImageForOptions)(const NSDictionary& options);
  /// The wallpaper's large picture, by which the user chooses it: a PNG resource, named without its
  /// extension. Where it is empty, the host takes the small one.
  std::string (*representativeThumbnailImageName)();
  /// Builds a wallpaper for a rectangle at the origin, in pixels. It does not animate yet. Null where that
  /// cannot be done; the host says so and shows nothing.
  std::shared_ptr<Wallpaper> (*initWithFrame)(CGRect frame);
};

/// The exported symbol is this, followed by the class's name.
inline constexpr const char* kWallpaperClassSymbolPrefix = "nivloWallpaperClass_";

/// The operations of a class for its WallpaperClass. Where the class lacks an optional one, the answer here
/// is what the host makes of its absence. A member of the right name but of a wrong type does not compile,
/// rather than counting as absent.
template <typename Class>
struct WallpaperClassOperations {
  static std::string identifier() { return Class::identifier(); }
  static bool colorChangesSignificantly() {
    if constexpr (requires { &Class::colorChangesSignificantly; }) {
      return Class::colorChangesSignificantly();
    }
    return false;
  }
  static std::vector<NSDictionary> presetWallpaperOptions() {
    if constexpr (requires { &Class::presetWallpaperOptions; }) {
      return Class::presetWallpaperOptions();
    }
    return {};
  }
  static std::string descriptionForOptions(const NSDictionary& options) {
    if constexpr (requires { &Class::descriptionForOptions; }) {
      return Class::descriptionForOptions(options);
    }
    return "";
  }
  static std::string thumbnailImageName() {
    if constexpr (requires { &Class::thumbnailImageName; }) {
      return Class::thumbnailImageName();
    }
    return "";
  }
  static std::shared_ptr<UIImage> thumbnailImageForOptions(const NSDictionary& options) {
    if constexpr (requires { &Class::thumbnailImageForOptions; }) {
      return Class::thumbnailImageForOptions(options);
    }
    return nullptr;
  }
  static std::string representativeThumbnailImageName() {
    if constexpr (requires { &Class::representativeThumbnailImageName; }) {
      return Class::representativeThumbnailImageName();
    }
    return "";
  }
  static std::shared_ptr<Wallpaper> initWithFrame(CGRect frame) { return Class::initWithFrame(frame); }
};

}  // namespace nivlo

/// Exports a class that derives from Wallpaper. Stands in one source file, after the class, in the class's
/// namespace. The class has the operations of WallpaperClass as public static members; all but identifier and
/// initWithFrame are optional.
#define NIVLO_EXPORT_WALLPAPER(Class)                                           \
  extern "C" __attribute__((visibility("default")))                             \
  const nivlo::WallpaperClass nivloWallpaperClass_##Class = {                   \
      nivlo::kWallpaperClassMark,                                               \
      nivlo::kWallpaperContractVersion,                                         \
      #Class,                                                                   \
      nivlo::WallpaperClassOperations<Class>::identifier,                       \
      nivlo::WallpaperClassOperations<Class>::colorChangesSignificantly,        \
      nivlo::WallpaperClassOperations<Class>::presetWallpaperOptions,           \
      nivlo::WallpaperClassOperations<Class>::descriptionForOptions,            \
      nivlo::WallpaperClassOperations<Class>::thumbnailImageName,               \
      nivlo::WallpaperClassOperations<Class>::thumbnailImageForOptions,         \
      nivlo::WallpaperClassOperations<Class>::representativeThumbnailImageName, \
      nivlo::WallpaperClassOperations<Class>::initWithFrame,                    \
  }
