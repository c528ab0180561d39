#include "host/commands/ChimeCommand.hpp"

#include <iostream>
#include <string>

#include "host/bundle/BundleLoader.hpp"
#include "host/commands/SharedOptions.hpp"
#include "host/log/ConsoleLog.hpp"
#include "host/loop/MainLoop.hpp"
#include "host/text/VisibleText.hpp"
#include "linux/sound/GStreamerSound.hpp"
#include "platform/AudioToolbox/AudioServices.hpp"
#include "platform/Foundation/NSURL.hpp"
#include "platform/drivers/Drivers.hpp"

namespace nivlo {

namespace {

/// Returns an error message, empty on success.
std::string playChime(const std::filesystem::path& path, MainLoop& loop) {
  std::string error;
  const auto bundle = openWallpaperBundle(path, &error);
  if (!bundle) {
    return error;
  }
  const auto chime = bundle->chime();
  if (!chime) {
    return "the wallpaper " + bundle->name() + " has no chime";
  }
  if (!std::filesystem::is_regular_file(*chime)) {
    return "the chime " + chime->string() + " is missing; install the wallpaper " + bundle->name() + " again";
  }
  SystemSoundID sound = 0;
  AudioServicesCreateSystemSoundID(NSURL::fileURLWithPath(*chime), &sound);
  AudioServicesAddSystemSoundCompletion(
      sound, nullptr, nullptr, [](SystemSoundID, void* running) { static_cast<MainLoop*>(running)->quit(); },
      &loop);
  AudioServicesPlaySystemSound(sound);
  loop.run();
  AudioServicesDisposeSystemSoundID(sound);
  return "";
}

}  // namespace

ChimeCommand::ChimeCommand(CLI::App& app)
    : Command(app, "chime", "Play the wallpaper's chime, to hear whether sound works") {
  addBundle(arguments(), bundle_);
}

int ChimeCommand::run() const {
  MainLoop loop;
  installDrivers(
      {.logSink = makeConsoleLog(), .mainQueue = MainLoop::makeMainQueue(), .sound = makeGStreamerSound()});
  const auto error = playChime(bundle_, loop);
  MainLoop::drain();
  installDrivers({});
  if (!error.empty()) {
    std::cerr << "nivlo: " << visibleText(error) << '\n';
  }
  return error.empty() ? 0 : 1;
}

}  // namespace nivlo
