#include "host/commands/AllCommands.hpp"

#include <algorithm>

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include "host/commands/ChimeCommand.hpp"
#include "host/commands/CtlCommand.hpp"
#include "host/commands/DevicesCommand.hpp"
#include "host/commands/InstallServiceCommand.hpp"
#include "host/commands/PickCommand.hpp"
#include "host/commands/PresetsCommand.hpp"
#include "host/commands/RunCommand.hpp"
#include "host/commands/ScanCommand.hpp"
#include "host/commands/WallpapersCommand.hpp"

namespace nivlo {

namespace {

constexpr auto kDescription =
    "Shows the live picture of a camera as the desktop background. Codes that the camera sees are offered to "
    "be opened or copied, and shaking the device switches cameras.";

constexpr auto kFooter = R"(Examples:
  nivlo                                show the first preset
  nivlo --preset 4                     show the fourth; 'nivlo presets' lists them
  nivlo --bundle tide                  show another wallpaper; 'nivlo wallpapers' lists them
  nivlo --camera front --qr off        show the front camera, and ignore codes
  nivlo --source back=file:photo.jpg   use a picture as the back camera
  nivlo --surface offscreen --snapshot wall.png --frames 30
                                       draw 30 frames into memory, and save the last one
  nivlo scan *.png                     read the codes in pictures
  nivlo ctl pause                      close the camera of the running wallpaper
'nivlo COMMAND --help' explains a command. While Nivlo is running, starting it again passes --bundle, --preset,
--qr and --camera on to it. With the power-saver profile, it looks for codes less often.
)";

using Commands = std::vector<std::unique_ptr<Command>>;

/// Adds the commands in the order in which the help lists them.
template <class... Each>
Commands addCommands(CLI::App& app) {
  Commands commands;
  (commands.push_back(std::make_unique<Each>(app)), ...);
  return commands;
}

}  // namespace

AllCommands::AllCommands() : app_(kDescription, "nivlo") {
  app_.set_version_flag("--version", NIVLO_VERSION);
  app_.require_subcommand(0, 1);
  commands_ = addCommands<RunCommand,  // first: what the program does without a command
                          WallpapersCommand, PresetsCommand, PickCommand, DevicesCommand, ChimeCommand,
                          ScanCommand, CtlCommand, InstallServiceCommand>(app_);
  app_.footer(kFooter);  // commands that were added after it would repeat it in their own help
}

const Command& AllCommands::chosen() const {
  const auto named = std::ranges::find_if(commands_, [](const auto& command) { return command->chosen(); });
  return named == commands_.end() ? *commands_.front() : **named;
}

}  // namespace nivlo
