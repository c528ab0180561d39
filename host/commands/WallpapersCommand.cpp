#include "host/commands/WallpapersCommand.hpp"

#include <iostream>
#include <utility>

#include <CLI/App.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "host/bundle/InstalledWallpapers.hpp"
#include "host/commands/SharedOptions.hpp"
#include "host/log/ConsoleLog.hpp"
#include "host/text/VisibleText.hpp"
#include "linux/desktop/LinuxDeviceIdentity.hpp"
#include "platform/drivers/Drivers.hpp"

namespace nivlo {

namespace {

using Json = nlohmann::ordered_json;

Json asJson(const InstalledWallpaper& wallpaper) {
  const auto path = wallpaper.path.string();
  if (!wallpaper.bundle) {
    return {{"bundle", path}, {"error", wallpaper.error}};
  }
  const auto& bundle = *wallpaper.bundle;
  return {{"name", bundle.name()},
          {"identifier", bundle.identifier()},
          {"bundle", path},
          {"presets", bundle.presets().size()},
          {"colorChangesSignificantly", bundle.colorChangesSignificantly()},
          {"thumbnailImageName", bundle.thumbnailImageName()},
          {"representativeThumbnailImageName", bundle.representativeThumbnailImageName()}};
}

std::string orNone(const std::string& picture) { return picture.empty() ? "none" : visibleText(picture); }

std::string inWords(const InstalledWallpaper& wallpaper) {
  const auto path = visibleText(wallpaper.path.string());
  if (!wallpaper.bundle) {
    return fmt::format("{}\n  unusable    {}\n", visibleText(wallpaper.path.stem().string()),
                       wallpaper.error);
  }
  const auto& bundle = *wallpaper.bundle;
  return fmt::format(
      "{}\n"
      "  identifier  {}\n"
      "  bundle      {}\n"
      "  presets     {}\n"
      "  colours     {}\n"
      "  thumbnail   {}\n"
      "  picture     {}\n",
      bundle.name(), bundle.identifier(), path, bundle.presets().size(),
      bundle.colorChangesSignificantly() ? "change significantly" : "hardly change",
      orNone(bundle.thumbnailImageName()), orNone(bundle.representativeThumbnailImageName()));
}

}  // namespace

WallpapersCommand::WallpapersCommand(CLI::App& app)
    : Command(app, "wallpapers", "List the installed wallpapers; --bundle takes their names") {
  arguments().add_flag(
      "--json", json_,
      "Print one JSON array: of each wallpaper its name, identifier, bundle, number of presets, "
      "whether its colours change significantly, and its pictures; or its bundle and an error");
  addMachine(arguments(), machine_);
}

int WallpapersCommand::run() const {
  installDrivers({.logSink = makeConsoleLog(), .device = makeLinuxDeviceIdentity(machine_)});
  const auto wallpapers = openInstalledWallpapers();
  if (json_) {
    auto array = Json::array();
    for (const auto& wallpaper : wallpapers) {
      array.push_back(asJson(wallpaper));
    }
    std::cout << array.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
    return 0;
  }
  for (const auto& wallpaper : wallpapers) {
    std::cout << inWords(wallpaper);
  }
  return 0;
}

}  // namespace nivlo
