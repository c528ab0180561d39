// A folder of code and resources, and the Info.plist that describes it.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/Foundation/NSDictionary.hpp"

namespace nivlo {

/// A bundle: a folder in which Info.plist, the shared object and the resources lie side by side. Immutable.
///
/// A wallpaper finds its own bundle with bundleForClass, and its resources with pathForResource.
class NSBundle {
 public:
  /// Opens the bundle in a folder by reading its Info.plist, an XML property list. When that cannot be read,
  /// returns null and writes the cause to `*error`.
  static std::shared_ptr<NSBundle> bundleWithPath(const std::filesystem::path& path, std::string* error);

  /// The bundle of the program that runs, not of the wallpaper. Never null; its infoDictionary is empty until
  /// setMainBundle is called. Callable from any thread.
  static std::shared_ptr<const NSBundle> mainBundle();
  /// Called by the program at its start: sets its folder and its description, of which the log uses
  /// CFBundleName and CFBundleVersion. Callable from any thread; those who hold the earlier main bundle keep
  /// it.
  static void setMainBundle(std::filesystem::path path, NSDictionary info);

  /// The bundle that the class of this name was loaded from; null for a class that no bundle was registered
  /// for. Main thread only.
  static std::shared_ptr<NSBundle> bundleForClass(std::string_view className);
  /// Called by the host when it loads a bundle: records that the class comes from it, in place of any earlier
  /// bundle. Main thread only.
  static void registerClass(std::string_view className, std::shared_ptr<NSBundle> bundle);

  /// The folder; empty for a main bundle that was not set.
  const std::filesystem::path& bundlePath() const { return path_; }
  /// The strings, numbers and booleans at the top level of Info.plist. Values of other kinds are left out.
  const NSDictionary& infoDictionary() const { return info_; }
  /// The string under the key in infoDictionary(); empty when there is none.
  std::string infoString(std::string_view key) const;

  /// The path of the file "name.type" in the folder, for example pathForResource("bell", "m4a"). Absent when
  /// there is no such regular file.
  std::optional<std::filesystem::path> pathForResource(std::string_view name, std::string_view type) const;

 private:
  NSBundle(std::filesystem::path path, NSDictionary info) : path_(std::move(path)), info_(std::move(info)) {}

  std::filesystem::path path_;
  NSDictionary info_;
};

}  // namespace nivlo
