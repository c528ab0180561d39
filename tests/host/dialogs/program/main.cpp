// nivlo-test-dialogs: shows alerts and prints what happens to them. It reads commands from standard input:
//   show TITLE CANCEL DISABLED FILE  shows an alert with the file's content and the buttons Cancel and Copy;
//                                    CANCEL and DISABLED are indices of buttons, or -1
//   copy FILE                        copies the file's content without a dialog
//   cancel-all                       cancels all alerts, as the end of the program does
// nivlo-test-dialogs BUNDLE...: shows the wallpapers instead and prints what is picked. A preset 4 cannot be
// applied.
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

#include <unistd.h>

#include "host/alerts/DesktopDialogs.hpp"
#include "host/alerts/TerminalAlerts.hpp"
#include "host/alerts/TerminalPasteboard.hpp"
#include "host/bundle/BundleLoader.hpp"
#include "host/commands/PickCommand.hpp"
#include "host/loop/EventSource.hpp"
#include "host/loop/MainLoop.hpp"
#include "platform/drivers/Drivers.hpp"

namespace nivlo {
namespace {

AlertCallbacks tell(const std::string& title, const std::string& message) {
  const auto say = [title](const char* event) { std::cout << title << ' ' << event << std::endl; };
  return {.appeared = [say] { say("appeared"); },
          .tapped =
              [say, message](long button) {
                if (button == 1) {
                  drivers().pasteboard->setString(message);
                }
                say(button == 1 ? "tapped Copy" : "tapped Cancel");
              },
          .cancelled = [say] { say("cancelled"); },
          .gone = [say] { say("gone"); }};
}

std::string contentOf(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void obey(const std::string& line) {
  std::istringstream words(line);
  std::string command, name, file;
  AlertContent content;
  words >> command >> name >> content.cancelButtonIndex >> content.disabledButtonIndex >> file;
  if (command == "copy") {
    drivers().pasteboard->setString(contentOf(name));
  } else if (command == "show") {
    content.title = name;
    content.message = contentOf(file);
    content.buttons = {"Cancel", "Copy"};
    drivers().alerts->present(content, tell(name, content.message));
  } else if (command == "cancel-all") {
    drivers().alerts->cancelAll();
  }
}

int pick(const std::vector<std::string>& bundles) {
  std::vector<std::shared_ptr<const WallpaperBundle>> wallpapers;
  for (const auto& bundle : bundles) {
    std::string error;
    wallpapers.push_back(openWallpaperBundle(bundle, &error));
  }
  const auto choose = [](const WallpaperChoice& choice) {
    std::cout << "picked " << choice.bundle.stem().string() << ' ' << choice.preset << std::endl;
    return choice.preset == 4 ? "The front camera is <gone>." : "";
  };
  return pickWallpaper(wallpapers, {.bundle = wallpapers.front()->path(), .preset = 1}, choose);
}

}  // namespace
}  // namespace nivlo

int main(int count, char** arguments) {
  using namespace nivlo;
  if (count > 1) {
    return pick({arguments + 1, arguments + count});
  }
  Drivers machine;
  machine.mainQueue = MainLoop::makeMainQueue();
  auto desktop =
      makeDesktopDialogs(makeTerminalAlerts(std::cout, STDIN_FILENO), makeTerminalPasteboard(std::cout));
  machine.alerts = std::move(desktop.alerts);
  machine.pasteboard = std::move(desktop.pasteboard);
  installDrivers(std::move(machine));
  MainLoop loop;
  const auto input = EventSource::onReadable(STDIN_FILENO, [&loop] {
    char bytes[4096];
    const auto size = read(STDIN_FILENO, bytes, sizeof bytes);
    if (size <= 0) {
      loop.quit();
      return;
    }
    std::istringstream lines(std::string(bytes, static_cast<std::size_t>(size)));
    for (std::string line; std::getline(lines, line);) {
      obey(line);
    }
  });
  loop.run();
  installDrivers({});
}
