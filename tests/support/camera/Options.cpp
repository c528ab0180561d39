#include "tests/support/camera/Options.hpp"

#include <map>

namespace nivlo::test {
namespace {

const std::map<std::string, ColorMatrix> kMatrices{{"601", ColorMatrix::BT601}, {"709", ColorMatrix::BT709}};
const std::map<std::string, ColorRange> kRanges{{"limited", ColorRange::Limited}, {"full", ColorRange::Full}};

}  // namespace

CameraOptions parseOptions(const std::vector<std::string>& arguments) {
  std::map<std::string, std::string> given{
      {"--name", ""},     {"--location", ""},   {"--rotation", ""},    {"--picture", ""},
      {"--color", ""},    {"--format", "YUY2"}, {"--also", ""},        {"--fps", "30"},
      {"--padding", "0"}, {"--buffers", "0"},   {"--size", "640x480"}, {"--matrix", ""},
      {"--range", ""},    {"--transform", ""},  {"--memory", ""},      {"--mischief", ""}};
  for (std::size_t i = 0; i < arguments.size(); i += 2) {
    given.at(arguments[i]) = arguments.at(i + 1);
  }
  CameraOptions options{.name = given["--name"],
                        .location = given["--location"],
                        .rotation = given["--rotation"],
                        .padding = std::stoi(given["--padding"]),
                        .buffers = std::stoi(given["--buffers"]),
                        .memory = given["--memory"],
                        .mischief = given["--mischief"],
                        .picture = given["--picture"]};
  options.modes.push_back(parseMode(given["--format"] + ":" + given["--size"] + "@" + given["--fps"]));
  if (const auto& mode = given["--also"]; !mode.empty()) {
    options.modes.push_back(parseMode(mode));
  }
  if (const auto& turn = given["--transform"]; !turn.empty()) {
    options.transform = std::stoi(turn);
  }
  if (const auto& color = given["--color"]; !color.empty()) {
    options.color = parseColor(color);
  }
  if (const auto& matrix = given["--matrix"]; !matrix.empty()) {
    options.colorimetry.matrix = kMatrices.at(matrix);
  }
  if (const auto& range = given["--range"]; !range.empty()) {
    options.colorimetry.range = kRanges.at(range);
  }
  return options;
}

}  // namespace nivlo::test
