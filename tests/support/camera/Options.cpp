#include "tests/support/camera/Options.hpp"

#include <cstdio>
#include <functional>
#include <map>

namespace nivlo::test {
namespace {

constexpr const char* kHelp = R"(nivlo-test-camera --name NAME [OPTION VALUE]...
Publishes a PipeWire camera until it is ended. Prints "streaming" and "paused" as its readers come and go.

  --description TEXT      for people; the name when absent
  --location WHERE        front, back or external; unsaid when absent
  --rotation DEGREES      how the sensor is mounted; unsaid when absent
  --transform DEGREES     counter-clockwise turn written into each buffer; none when absent
  --format FORMAT         YUY2 (default), NV12, I420, BGRx, RGB or MJPEG
  --size WIDTHxHEIGHT     640x480
  --fps N                 30
  --also MODE             offers a further mode, after the first: FORMAT:WIDTHxHEIGHT@FPS
  --matrix MATRIX         says BT601 or BT709
  --range RANGE           says full or limited
  --padding BYTES         makes rows longer than they must be
  --buffers N             has at most N buffers
  --color RRGGBB          shows one colour
  --picture FILE          shows a picture; without either, four coloured quarters
)";

using Setter = std::function<bool(CameraOptions&, const std::string&)>;

template <typename T>
bool assign(T& target, const std::optional<typename T::value_type>& value) {
  if (value) target = *value;
  return value.has_value();
}

bool setText(std::string& target, const std::string& value) {
  target = value;
  return true;
}

bool setNumber(int& target, const std::string& value) {
  return std::sscanf(value.c_str(), "%d", &target) == 1;
}

const std::map<std::string, Setter>& setters() {
  static const std::map<std::string, Setter> kSetters{
      {"--name", [](auto& o, const auto& v) { return setText(o.name, v); }},
      {"--description", [](auto& o, const auto& v) { return setText(o.description, v); }},
      {"--location", [](auto& o, const auto& v) { return setText(o.location, v); }},
      {"--rotation", [](auto& o, const auto& v) { return setText(o.rotation, v); }},
      {"--transform", [](auto& o, const auto& v) { return setNumber(o.transform.emplace(), v); }},
      {"--format",
       [](auto& o, const auto& v) {
         const auto format = parseFormat(v);
         if (format) o.modes[0].format = *format;
         return format.has_value();
       }},
      {"--size",
       [](auto& o, const auto& v) {
         return std::sscanf(v.c_str(), "%dx%d", &o.modes[0].width, &o.modes[0].height) == 2;
       }},
      {"--fps", [](auto& o, const auto& v) { return setNumber(o.modes[0].framesPerSecond, v); }},
      {"--also",
       [](auto& o, const auto& v) {
         const auto mode = parseMode(v);
         if (mode) o.modes.push_back(*mode);
         return mode.has_value();
       }},
      {"--matrix",
       [](auto& o, const auto& v) {
         o.colorimetry.matrix = v == "BT709" ? ColorMatrix::BT709 : ColorMatrix::BT601;
         return v == "BT601" || v == "BT709";
       }},
      {"--range",
       [](auto& o, const auto& v) {
         o.colorimetry.range = v == "full" ? ColorRange::Full : ColorRange::Limited;
         return v == "full" || v == "limited";
       }},
      {"--padding", [](auto& o, const auto& v) { return setNumber(o.padding, v) && o.padding >= 0; }},
      {"--buffers", [](auto& o, const auto& v) { return setNumber(o.buffers, v) && o.buffers > 0; }},
      {"--color", [](auto& o, const auto& v) { return assign(o.color, parseColor(v)); }},
      {"--picture", [](auto& o, const auto& v) { return setText(o.picture, v); }},
  };
  return kSetters;
}

bool isSane(const Mode& mode) {
  return mode.width > 0 && mode.height > 0 && mode.width <= 8192 && mode.height <= 8192 &&
         mode.framesPerSecond > 0;
}

}  // namespace

std::optional<CameraOptions> parseOptions(const std::vector<std::string>& arguments) {
  CameraOptions options;
  options.modes.resize(1);
  for (std::size_t i = 0; i < arguments.size(); i += 2) {
    const auto setter = setters().find(arguments[i]);
    if (setter == setters().end() || i + 1 == arguments.size()) {
      std::fputs(kHelp, stderr);
      return std::nullopt;
    }
    if (!setter->second(options, arguments[i + 1])) {
      std::fprintf(stderr, "%s does not take %s\n", arguments[i].c_str(), arguments[i + 1].c_str());
      return std::nullopt;
    }
  }
  for (const Mode& mode : options.modes) {
    if (options.name.empty() || !isSane(mode)) {
      std::fputs(kHelp, stderr);
      return std::nullopt;
    }
  }
  if (options.description.empty()) options.description = options.name;
  return options;
}

}  // namespace nivlo::test
