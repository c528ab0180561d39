#include "tests/support/desktop/HeadlessSway.hpp"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <nlohmann/json.hpp>
#include <unistd.h>

#include "linux/camera/ImageFile.hpp"
#include "tests/support/desktop/Toolkit.hpp"

namespace nivlo::test {
namespace {

constexpr auto kReady = "the display is ";

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

// sway refuses to run as root; in a user namespace it does not see that it does.
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

Picture readPicture(const std::filesystem::path& path) {
  const auto [frame, error] = loadImageFile(path);
  if (!frame) {
    throw std::runtime_error(error);
  }
  const auto bytes = frame->format == PixelFormat::RGB ? 3 : 4;
  Picture picture{frame->width, frame->height, {}};
  for (int y = 0; y < frame->height; ++y) {
    const auto* row = frame->planes[0].data + static_cast<std::ptrdiff_t>(y) * frame->planes[0].stride;
    for (int x = 0; x < frame->width; ++x, row += bytes) {
      picture.pixels.push_back({row[0], row[1], row[2]});
    }
  }
  return picture;
}

}  // namespace

HeadlessSway::HeadlessSway(PrivateBus& bus, std::vector<DesktopSize> outputs)
    : bus_(bus), outputs_(std::move(outputs)) {
  const auto configuration = directory_.path() / "sway.conf";
  writeConfiguration(configuration, outputs_);
  const Environment headless{{"WLR_BACKENDS", "headless"},
                             {"WLR_HEADLESS_OUTPUTS", std::to_string(outputs_.size())},
                             {"WLR_RENDERER", "pixman"},
                             {"WLR_LIBINPUT_NO_DEVICES", "1"}};
  process_ = std::make_unique<ChildProcess>(swayCommand(configuration), merged(environment(), headless));
  const auto line = process_->waitForLine(kReady);
  if (!line) {
    throw std::runtime_error("sway does not start: " + process_->output());
  }
  display_ = line->substr(std::string_view(kReady).size());
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

void HeadlessSway::message(const std::string& command) const { run({"swaymsg", "--", command}); }

std::string HeadlessSway::query(const std::string& type) const { return run({"swaymsg", "-r", "-t", type}); }

std::optional<WindowPlace> HeadlessSway::focusedWindow() const {
  return findFocused(nlohmann::json::parse(query("get_tree")));
}

Picture HeadlessSway::screenshot(const std::string& output, const std::string& name) const {
  const auto path = outputDirectory() / (name + ".png");
  run({"grim", "-l", "1", "-o", output, path});
  return readPicture(path);
}

void HeadlessSway::kill() { process_->kill(); }

std::string HeadlessSway::run(std::vector<std::string> arguments) const {
  const auto name = arguments.front();
  ChildProcess process(std::move(arguments), environment());
  // No program writes this; the search ends when both outputs have been read to their end.
  process.waitForLine("\x1f");
  if (process.waitForExit() != 0) {
    throw std::runtime_error(name + ": " + process.output());
  }
  return process.standardOutput();
}

}  // namespace nivlo::test
