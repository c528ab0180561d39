#include "host/commands/LastingCheck.hpp"

#include <algorithm>
#include <regex>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "host/bundle/BundleLoader.hpp"
#include "host/surfaces/PresentOutputs.hpp"
#include "host/text/VisibleText.hpp"
#include "linux/camera/files/FileCameras.hpp"
#include "linux/motion/ScriptedAccelerometer.hpp"

namespace nivlo {

namespace {

using Position = AVCaptureDevicePosition;

/// Returns whether a screen could be called like that. The kernel's types of connectors come first, then the
/// spelling of X drivers, then the outputs that compositors make up. A number follows, or several for a
/// dock's.
bool isOutputName(const std::string& name) {
  static const std::regex known(
      "(screen|default)|"
      "(VGA|DVI(-[IDA])?|Composite|SVIDEO|LVDS|Component|DIN|DP|HDMI(-[AB])?|TV|eDP|Virtual|DSI|DPI|SPI|USB|"
      "Unknown|"
      "DisplayPort|DFP|CRT|VIRTUAL|"
      "HEADLESS|WL|X11|NOOP|VNC|RDP|XWAYLAND)-?[0-9]+([-.][0-9]+)*");
  return std::regex_match(name, known);
}

std::string whyNoBundle(const RunOptions& options) {
  std::string error;
  const auto bundle = openWallpaperBundle(options.bundle, &error);
  return bundle ? whyImpossible(options.show, *bundle) : error;
}

std::string whyNoCamera(const CameraSource& source, Position position) {
  std::string error;
  if (source.kind == CameraSource::Kind::File) {
    makeFileCamera(source.value, position, &error);
  }
  return error;
}

std::string whyNoScript(const RunOptions& options) {
  std::string error;
  if (options.accelerometerScript) {
    makeScriptedAccelerometer(*options.accelerometerScript, &error);
  }
  return error;
}

LastingCheck checkOutput(const std::string& name) {
  if (name.empty()) {
    return {};
  }
  const auto present = presentOutputs();
  if (present && std::ranges::find(*present, name) != present->end()) {
    return {};
  }
  const auto here =
      present ? fmt::format("there is {} now", fmt::join(*present, " and ")) : "no display answers here";
  if (!isOutputName(name)) {
    return {.refusal = visibleText(fmt::format(
                "--output: no screen can be called '{}'; {}. Names of screens look like eDP-1 or HDMI-A-1",
                name, here))};
  }
  return {.note = visibleText(
              fmt::format("There is no output {} at present ({}). Nivlo will wait for it", name, here))};
}

}  // namespace

LastingCheck checkLasting(const RunOptions& options) {
  for (const auto& refusal : {whyNoBundle(options), whyNoCamera(options.sources.back, Position::Back),
                              whyNoCamera(options.sources.front, Position::Front), whyNoScript(options)}) {
    if (!refusal.empty()) {
      return {.refusal = refusal};
    }
  }
  return checkOutput(options.surface.output);
}

}  // namespace nivlo
