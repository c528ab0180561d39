#include "host/commands/PickCommand.hpp"

#include <algorithm>
#include <iostream>
#include <utility>

#include <glib.h>

#include "host/alerts/gtk/Toolkit.hpp"
#include "host/bundle/BundleLoader.hpp"
#include "host/bundle/InstalledWallpapers.hpp"
#include "host/commands/SharedOptions.hpp"
#include "host/log/ConsoleLog.hpp"
#include "host/loop/MainLoop.hpp"
#include "host/pick/PickWindow.hpp"
#include "host/text/VisibleText.hpp"
#include "linux/desktop/LinuxDeviceIdentity.hpp"
#include "platform/Foundation/NSLog.hpp"
#include "platform/drivers/Drivers.hpp"

namespace nivlo {

namespace {

using Bundles = std::vector<std::shared_ptr<const WallpaperBundle>>;

Bundles usableWallpapers() {
  Bundles bundles;
  for (const auto& wallpaper : openInstalledWallpapers()) {
    if (wallpaper.bundle) {
      bundles.push_back(wallpaper.bundle);
    } else {
      NSLog("pick: %@", wallpaper.error);
    }
  }
  return bundles;
}

PickWallpaper describe(const WallpaperBundle& bundle) {
  PickWallpaper wallpaper{.entry = {bundle.name(), bundle.picture()}};
  for (const auto& preset : bundle.presets()) {
    auto words = preset.description;
    words.front() = g_ascii_toupper(words.front());
    wallpaper.presets.push_back(
        {std::move(words), bundle.presetPicture(static_cast<int>(wallpaper.presets.size()) + 1)});
  }
  return wallpaper;
}

}  // namespace

PickCommand::PickCommand(CLI::App& app)
    : Command(
          app, "pick",
          "Choose a wallpaper and a preset by their pictures, for the running Nivlo and for the one that the "
          "desktop starts") {
  addBundle(arguments(), bundle_);
}

int PickCommand::run() const {
  installDrivers({.logSink = makeConsoleLog(), .device = makeLinuxDeviceIdentity("")});
  std::string error = "no wallpaper can be used; 'nivlo wallpapers' tells why";
  Bundles wallpapers;
  if (bundle_.empty()) {
    wallpapers = usableWallpapers();
  } else if (auto bundle = openWallpaperBundle(bundle_, &error)) {
    wallpapers.push_back(std::move(bundle));
  }
  if (wallpapers.empty()) {
    std::cerr << "nivlo: " << visibleText(error) << '\n';
    return 1;
  }
  return pickWallpaper(wallpapers, shownWallpaper(), chooseWallpaper);
}

int pickWallpaper(const Bundles& wallpapers, const WallpaperChoice& shown, const ChooseWallpaper& choose) {
  if (!startToolkit()) {
    return 1;
  }
  std::vector<PickWallpaper> entries;
  PickedPreset marked;
  for (const auto& bundle : wallpapers) {
    entries.push_back(describe(*bundle));
    if (bundle->path() == shown.bundle) {
      marked = {.wallpaper = static_cast<int>(entries.size()), .preset = shown.preset};
    }
  }
  const auto apply = [&](PickedPreset picked) {
    const auto& bundle = wallpapers.at(static_cast<std::size_t>(picked.wallpaper - 1));
    return choose({.bundle = bundle->path(), .preset = picked.preset});
  };
  MainLoop loop;
  const PickWindow window(std::move(entries), marked, apply, [&loop] { loop.quit(); });
  loop.run();
  return 0;
}

}  // namespace nivlo
