#include "host/toolkit/DialogService.hpp"

#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include "linux/handles/Descriptor.hpp"

namespace nivlo {

namespace {

using Kind = DialogMessage::Kind;

/// Lets go of what others may wait for: the terminal or pipe to which the program wrote, and its folder.
void leaveSurroundings() {
  std::error_code error;
  std::filesystem::current_path("/", error);
  const Descriptor nowhere(open("/dev/null", O_RDWR | O_CLOEXEC));
  dup2(nowhere.get(), STDOUT_FILENO);
  dup2(nowhere.get(), STDERR_FILENO);
}

}  // namespace

DialogService::DialogService(int socket)
    : socket_(socket), received_(EventSource::onReadable(socket, [this] { receive(); })) {}

void DialogService::run() { loop_.run(); }

void DialogService::receive() {
  if (const auto message = receiveDialogMessage(socket_)) {
    obey(*message);
  } else {
    leave();
  }
}

void DialogService::obey(const DialogMessage& message) {
  switch (message.kind) {
    case Kind::Show:
      show(message);
      break;
    case Kind::Close:
      alerts_.erase(message.numbers.at(0));
      break;
    case Kind::Copy:
      clipboard_.offer(message.texts.at(0));
      tell(Kind::Copied, {});
      break;
    case Kind::Wallpaper:
      wallpapers_.push_back({.entry = {message.texts.at(0), ""}});
      break;
    case Kind::Preset:
      wallpapers_.back().presets.push_back({message.texts.at(0), ""});
      break;
    case Kind::Picture: {
      auto& last = wallpapers_.back();
      (last.presets.empty() ? last.entry : last.presets.back()).picture += message.texts.at(0);
      break;
    }
    case Kind::Pick:
      openPickWindow(message);
      break;
    default:
      break;
  }
}

void DialogService::show(const DialogMessage& message) {
  const auto number = message.numbers.at(0);
  const AlertContent content{.title = message.texts.at(0),
                             .message = message.texts.at(1),
                             .buttons = {message.texts.begin() + 2, message.texts.end()},
                             .cancelButtonIndex = message.numbers.at(1),
                             .disabledButtonIndex = message.numbers.at(2)};
  alerts_[number] = std::make_unique<AlertDialog>(content, [this, number](std::optional<long> button) {
    if (button) {
      tell(Kind::Tapped, {number, *button});
    } else {
      tell(Kind::Cancelled, {number});
    }
  });
  tell(Kind::Appeared, {number});
}

void DialogService::openPickWindow(const DialogMessage& message) {
  const auto choose = [this](PickedPreset picked) -> std::string {
    tell(Kind::Picked, {picked.wallpaper, picked.preset});
    // The program answers nothing else while the window is open, or ends.
    const auto answer = receiveDialogMessage(socket_);
    return answer ? answer->texts.at(0) : "";
  };
  const PickedPreset marked{static_cast<int>(message.numbers.at(0)), static_cast<int>(message.numbers.at(1))};
  pickWindow_ =
      std::make_unique<PickWindow>(std::move(wallpapers_), marked, choose, [this] { loop_.quit(); });
}

void DialogService::tell(Kind kind, std::vector<std::int64_t> numbers) const {
  sendDialogMessage(socket_, {kind, std::move(numbers), {}});
}

void DialogService::leave() {
  received_ = EventSource();
  alerts_.clear();
  pickWindow_.reset();
  leaveSurroundings();
  clipboard_.whenUnneeded([this] { loop_.quit(); });
}

}  // namespace nivlo
