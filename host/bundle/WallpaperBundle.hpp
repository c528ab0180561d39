// A wallpaper that is ready to be shown, and what can be told of it before.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Foundation/NSBundle.hpp"
#include "platform/HostContract/WallpaperClass.hpp"

namespace nivlo {

/// An opened bundle and what its class answered when it was opened. Texts are fit to be shown in a terminal
/// and in a window. Main thread only.
class WallpaperBundle {
 public:
  /// Asks the class of the bundle. Returns null, with the cause in `*error`, when one of its answers throws.
  /// The drivers must be installed before, and the class must live as long as the process.
  static std::shared_ptr<const WallpaperBundle> ask(std::shared_ptr<NSBundle> bundle,
                                                    const WallpaperClass& wallpaperClass, std::string* error);

  /// The bundle's folder.
  const std::filesystem::path& path() const { return bundle_->bundlePath(); }
  /// The wallpaper's display name; never empty.
  const std::string& name() const { return name_; }
  const std::string& identifier() const { return identifier_; }
  bool colorChangesSignificantly() const { return colorChanges_; }

  /// A set of options and what it is called; never empty.
  struct Preset {
    NSDictionary options;
    std::string description;
  };
  /// At least one: a wallpaper that offers none has one without options.
  const std::vector<Preset>& presets() const { return presets_; }
  /// Counted from 1. The preset must exist.
  const Preset& preset(int number) const { return presets_.at(static_cast<std::size_t>(number - 1)); }
  /// Returns why there is no such preset, as a sentence for users; empty when there is.
  std::string whyNoPreset(int number) const;
  /// Returns whether any preset names the key, one of WallpaperOptionKeys.hpp.
  bool understands(std::string_view key) const;

  /// The names of PNG resources, without the extension; empty where the class names none.
  const std::string& thumbnailImageName() const { return thumbnailName_; }
  const std::string& representativeThumbnailImageName() const { return representativeName_; }
  /// The picture that stands for the preset: the one that its options name, else the one that the class
  /// answers. Null where there is none. The preset must exist.
  std::shared_ptr<UIImage> presetPicture(int number) const;
  /// The picture that stands for the wallpaper: the large one, else the small one, else its first preset's.
  /// Null where there is none.
  std::shared_ptr<UIImage> picture() const;
  /// The sound of 'nivlo chime'. Nothing where the wallpaper names none; a file that it names may still be
  /// missing.
  std::optional<std::filesystem::path> chime() const;

  /// Builds the wallpaper, guarded (see GuardedWallpaper). Returns null, with a sentence for users in
  /// `*error`, when the class cannot build it for this size, which is in pixels.
  std::shared_ptr<Wallpaper> build(CGSize size, std::string* error) const;

 private:
  WallpaperBundle(std::shared_ptr<NSBundle> bundle, const WallpaperClass& wallpaperClass);
  void describe(std::vector<NSDictionary> presets);
  std::shared_ptr<UIImage> imageNamed(const std::string& name) const;

  std::shared_ptr<NSBundle> bundle_;
  const WallpaperClass& class_;
  std::string name_;
  std::string identifier_;
  bool colorChanges_ = false;
  std::vector<Preset> presets_;
  std::string thumbnailName_;
  std::string representativeName_;
};

}  // namespace nivlo
