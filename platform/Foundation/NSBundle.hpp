// A folder with code, resources and a description of both.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/Foundation/NSDictionary.hpp"

namespace nivlo {

/// The layout is flat: Info.plist, the shared object and the resources lie side by side.
class NSBundle {
 public:
  /// Reads the folder's Info.plist. Null, with the cause in `*error`, where there is no readable one.
  static std::shared_ptr<NSBundle> bundleWithPath(const std::filesystem::path& path, std::string* error);

  /// The program itself; never null. Its infoDictionary is empty until the program says who it is. Callable
  /// from any thread.
  static std::shared_ptr<const NSBundle> mainBundle();
  /// Says it: the folder of the program and, above all, CFBundleName and CFBundleVersion. Callable from any
  /// thread; who has asked for the bundle before keeps the earlier one.
  static void setMainBundle(std::filesystem::path path, NSDictionary info);

  /// The bundle that was registered as the holder of the class; null if none was.
  static std::shared_ptr<NSBundle> bundleForClass(std::string_view className);
  /// Main thread only.
  static void registerClass(std::string_view className, std::shared_ptr<NSBundle> bundle);

  const std::filesystem::path& bundlePath() const { return path_; }
  /// The strings, numbers and booleans at the top of Info.plist.
  const NSDictionary& infoDictionary() const { return info_; }
  /// The string under the key; empty where there is none.
  std::string infoString(std::string_view key) const;

  /// The path of the file NAME.TYPE in the bundle; nothing where there is no such file.
  std::optional<std::filesystem::path> pathForResource(std::string_view name, std::string_view type) const;

 private:
  NSBundle(std::filesystem::path path, NSDictionary info) : path_(std::move(path)), info_(std::move(info)) {}

  std::filesystem::path path_;
  NSDictionary info_;
};

}  // namespace nivlo
