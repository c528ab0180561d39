#include "host/commands/PickCommand.hpp"

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <optional>
#include <string_view>
#include <utility>

#include <glib.h>

#include "host/bundle/BundleLoader.hpp"
#include "host/bundle/InstalledWallpapers.hpp"
#include "host/commands/SharedOptions.hpp"
#include "host/dialogs/DialogMessages.hpp"
#include "host/dialogs/DialogProcess.hpp"
#include "host/log/ConsoleLog.hpp"
#include "host/text/VisibleText.hpp"
#include "linux/desktop/LinuxDeviceIdentity.hpp"
#include "platform/Foundation/NSLog.hpp"
#include "platform/drivers/Drivers.hpp"

namespace nivlo {

namespace {

using Kind = DialogMessage::Kind;
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

/// A message for pictures, whose files may be larger than a message.
constexpr std::size_t kPicturePart = std::size_t{64} * 1024;

class PickConversation {
 public:
  PickConversation() : socket_(startDialogProcess()) {}

  void say(Kind kind, const std::string& text) { say({kind, {}, {text}}); }
  void say(const DialogMessage& message) { isOpen_ = isOpen_ && sendDialogMessage(socket_.get(), message); }
  void sayPicture(const std::shared_ptr<const UIImage>& picture) {
    const std::string_view data = picture ? picture->data() : std::string_view();
    for (std::size_t begin = 0; begin < data.size(); begin += kPicturePart) {
      say(Kind::Picture, std::string(data.substr(begin, kPicturePart)));
    }
  }
  std::optional<DialogMessage> hear() const {
    return isOpen_ ? receiveDialogMessage(socket_.get()) : std::nullopt;
  }

 private:
  Descriptor socket_;
  bool isOpen_ = true;
};

void describe(const WallpaperBundle& bundle, PickConversation& conversation) {
  conversation.say(Kind::Wallpaper, bundle.name());
  conversation.sayPicture(bundle.picture());
  int number = 0;
  for (const auto& preset : bundle.presets()) {
    auto words = preset.description;
    words.front() = g_ascii_toupper(words.front());
    conversation.say(Kind::Preset, words);
    conversation.sayPicture(bundle.presetPicture(++number));
  }
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
  PickConversation conversation;
  std::int64_t marked = 0;
  for (std::size_t i = 0; i < wallpapers.size(); ++i) {
    describe(*wallpapers[i], conversation);
    if (wallpapers[i]->path() == shown.bundle) {
      marked = static_cast<std::int64_t>(i) + 1;
    }
  }
  conversation.say({Kind::Pick, {marked, marked == 0 ? 0 : shown.preset}, {}});
  bool wasShown = false;
  while (const auto message = conversation.hear()) {
    if (message->kind == Kind::NoDisplay) {
      NSLog(
          "pick: no Wayland or X11 display can be reached; start Nivlo from within the desktop session, or "
          "choose with 'nivlo --preset'");
      return 1;
    }
    if (message->kind == Kind::Picked) {
      const auto& bundle = wallpapers.at(static_cast<std::size_t>(message->numbers.at(0) - 1));
      const auto preset = static_cast<int>(message->numbers.at(1));
      conversation.say(Kind::Chosen, choose({.bundle = bundle->path(), .preset = preset}));
    }
    wasShown = true;
  }
  return wasShown ? 0 : 1;
}

}  // namespace nivlo
