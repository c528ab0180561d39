#include "host/commands/ChimeCommand.hpp"

#include <iostream>
#include <string>

#include "host/commands/SharedOptions.hpp"
#include "host/log/ConsoleLog.hpp"
#include "host/loop/MainLoop.hpp"
#include "linux/sound/GStreamerSound.hpp"
#include "platform/AudioToolbox/AudioServices.hpp"
#include "platform/Foundation/NSBundle.hpp"
#include "platform/drivers/Drivers.hpp"

namespace nivlo {

namespace {

/// Returns an error message, empty on success.
std::string playChime(const std::filesystem::path& bundle, MainLoop& loop) {
  std::string error;
  const auto* wallpaperClass = loadWallpaperClass(bundle, &error);
  if (!wallpaperClass) {
    return error;
  }
  const auto chime = NSBundle::bundleForClass(wallpaperClass->name)->pathForResource("hourlychimebeg", "m4a");
  if (!chime) {
    return "the wallpaper bundle " + bundle.string() + " has no chime; install Nivlo anew";
  }
  SystemSoundID sound = 0;
  AudioServicesCreateSystemSoundID(NSURL::fileURLWithPath(std::filesystem::absolute(*chime)), &sound);
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
    std::cerr << "nivlo: " << error << '\n';
  }
  return error.empty() ? 0 : 1;
}

}  // namespace nivlo
