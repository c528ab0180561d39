#include "tests/support/desktop/HeadlessSway.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <utility>

#include <nlohmann/json.hpp>
#include <unistd.h>

#include "tests/support/desktop/Toolkit.hpp"
#include "tests/support/pictures/PictureFile.hpp"

namespace nivlo::test {
namespace {

constexpr auto kReady = "WAYLAND_DISPLAY is ";

void writeConfiguration(const std::filesystem::path& path, const std::vector<DesktopSize>& outputs) {
  std::ofstream file(path);
  int left = 0;
  for (std::size_t i = 0; i < outputs.size(); ++i) {
    file << "output HEADLESS-" << i + 1 << " resolution " << outputs[i].width << 'x' << outputs[i].height
         << " position " << left << " 0\n";
    left += outputs[i].width;
  }
  file << "xwayland disable\ndefault_border none\nfocus_follows_mouse no\n"
       << "exec echo " << kReady << "$WAYLAND_DISPLAY\n";
}

/// sway refuses to run as root, but cannot tell in a user namespace.
std::vector<std::string> swayCommand(const std::filesystem::path& configuration) {
  std::vector<std::string> command{"sway", "-c", configuration};
  if (geteuid() == 0) {
    command.insert(command.begin(), {"unshare", "--user", "--map-user=1000", "--map-group=1000"});
  }
  return command;
}

std::filesystem::path outputDirectory() {
  const char* chosen = std::getenv("NIVLO_TEST_OUTPUT");
  const std::filesystem::path directory = chosen ? chosen : NIVLO_TEST_OUTPUT_DIR;
  std::filesystem::create_directories(directory);
  return directory;
}

std::optional<WindowPlace> findFocused(const nlohmann::json& node) {
  if (node["focused"] && node.contains("pid")) {
    const auto& place = node["rect"];
    return WindowPlace{node["id"], node.value("app_id", ""), place["x"],
                       place["y"], place["width"],           place["height"]};
  }
  for (const auto* children : {"nodes", "floating_nodes"}) {
    for (const auto& child : node[children]) {
      if (auto found = findFocused(child)) {
        return found;
      }
    }
  }
  return std::nullopt;
}

}  // namespace

HeadlessSway::HeadlessSway(PrivateBus& bus, std::vector<DesktopSize> outputs)
    : bus_(bus), outputs_(std::move(outputs)) {
  start({{"WLR_BACKENDS", "headless"},
         {"WLR_HEADLESS_OUTPUTS", std::to_string(outputs_.size())},
         {"WLR_LIBINPUT_NO_DEVICES", "1"}});
}

HeadlessSway::HeadlessSway(PrivateBus& bus, const HeadlessSway& host) : bus_(bus) {
  start({{"WLR_BACKENDS", "wayland"}, {"WAYLAND_DISPLAY", host.display_}});
}

void HeadlessSway::start(const Environment& backend) {
  const auto configuration = directory_.path() / "sway.conf";
  writeConfiguration(configuration, outputs_);
  process_ = std::make_unique<ChildProcess>(
      swayCommand(configuration), merged(merged(environment(), {{"WLR_RENDERER", "pixman"}}), backend));
  display_ = process_->expectLine(kReady).substr(std::string_view(kReady).size());
}

HeadlessSway::~HeadlessSway() = default;

Environment HeadlessSway::environment() const {
  return merged(merged(bus_.environment(), softwareToolkit(display_)),
                {{"SWAYSOCK", directory_.path() / "sway.sock"}});
}

DesktopSize HeadlessSway::size() const {
  DesktopSize all;
  for (const auto& output : outputs_) {
    all = {all.width + output.width, std::max(all.height, output.height)};
  }
  return all;
}

void HeadlessSway::message(const std::string& command) const {
  outputOf({"swaymsg", "--", command}, environment());
}

std::optional<WindowPlace> HeadlessSway::focusedWindow() const {
  return findFocused(nlohmann::json::parse(outputOf({"swaymsg", "-r", "-t", "get_tree"}, environment())));
}

Picture HeadlessSway::screenshot(const std::string& output, const std::string& name) const {
  const auto path = outputDirectory() / (name + ".png");
  outputOf({"grim", "-l", "1", "-o", output, path}, environment());
  return readPicture(path);
}

void HeadlessSway::kill() { process_->kill(); }

}  // namespace nivlo::test
