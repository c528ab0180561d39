#include "host/bundle/InstalledWallpapers.hpp"

#include <algorithm>
#include <set>
#include <system_error>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <glib.h>

#include "host/bundle/BundleLoader.hpp"
#include "host/text/VisibleText.hpp"
#include "linux/handles/Owned.hpp"
#include "linux/program/ProgramFile.hpp"
#include "platform/Foundation/NSBundle.hpp"
#include "platform/HostContract/WallpaperInfoKeys.hpp"

namespace nivlo {

namespace {

constexpr auto kExtension = ".bundle";

/// The text without its letters' case, to be compared; for names in any script.
std::string caseless(const std::string& text) {
  const Owned<gchar, g_free> valid(g_utf8_make_valid(text.c_str(), -1));
  const Owned<gchar, g_free> folded(g_utf8_casefold(valid.get(), -1));
  return folded.get();
}

std::vector<std::filesystem::path> bundlesIn(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> bundles;
  std::error_code ignored;
  for (std::filesystem::directory_iterator entry(folder, ignored), end; entry != end;
       entry.increment(ignored)) {
    if (entry->path().extension() == kExtension && entry->is_directory(ignored)) {
      bundles.push_back(entry->path());
    }
  }
  std::ranges::sort(bundles);
  return bundles;
}

/// Returns the bundle's display name, or an empty text if its Info.plist gives none.
std::string titleOf(const std::filesystem::path& path) {
  std::string error;
  const auto bundle = NSBundle::bundleWithPath(path, &error);
  return bundle ? bundle->infoString(kBundleNameKey) : "";
}

}  // namespace

std::vector<std::filesystem::path> wallpaperFolders() {
  const std::filesystem::path shared = std::filesystem::path("nivlo") / "wallpapers";
  std::vector<std::filesystem::path> folders{programFolder(),
                                             (programFolder() / installedLibraries()).lexically_normal(),
                                             g_get_user_data_dir() / shared};
  for (const auto* const* folder = g_get_system_data_dirs(); *folder; ++folder) {
    folders.push_back(*folder / shared);
  }
  return folders;
}

std::vector<std::filesystem::path> installedBundles(const std::vector<std::filesystem::path>& folders) {
  std::vector<std::filesystem::path> bundles;
  std::set<std::string> names;
  for (const auto& folder : folders) {
    for (auto& bundle : bundlesIn(folder)) {
      if (names.insert(caseless(bundle.stem().string())).second) {
        bundles.push_back(std::move(bundle));
      }
    }
  }
  return bundles;
}

std::filesystem::path findBundle(const std::string& nameOrPath, std::string* error) {
  const auto wanted = caseless(nameOrPath);
  std::vector<std::string> names;
  for (const auto& bundle : installedBundles()) {
    const auto stem = bundle.stem().string();
    const auto title = titleOf(bundle);
    if (wanted == caseless(stem) || wanted == caseless(title)) {
      return bundle;
    }
    names.push_back(title.empty() ? stem : title);
  }
  std::error_code ignored;
  if (nameOrPath.find('/') != std::string::npos || std::filesystem::exists(nameOrPath, ignored)) {
    return std::filesystem::absolute(nameOrPath).lexically_normal();
  }
  *error = visibleText(fmt::format("'{}' is neither the folder of a bundle nor an installed wallpaper ({})",
                                   nameOrPath, fmt::join(names, ", ")));
  return {};
}

std::vector<InstalledWallpaper> openInstalledWallpapers() {
  std::vector<InstalledWallpaper> wallpapers;
  for (const auto& path : installedBundles()) {
    InstalledWallpaper wallpaper{.path = path};
    wallpaper.bundle = openWallpaperBundle(path, &wallpaper.error);
    wallpapers.push_back(std::move(wallpaper));
  }
  return wallpapers;
}

}  // namespace nivlo
