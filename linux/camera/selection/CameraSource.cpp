#include "linux/camera/selection/CameraSource.hpp"

#include <algorithm>

#include <fmt/format.h>

namespace nivlo {

std::optional<CameraSource> parseCameraSource(std::string_view text) {
  using Kind = CameraSource::Kind;
  const auto withValue = [&](std::string_view prefix, Kind kind) -> std::optional<CameraSource> {
    if (!text.starts_with(prefix) || text.size() == prefix.size()) {
      return std::nullopt;
    }
    return CameraSource{kind, std::string(text.substr(prefix.size()))};
  };
  if (text == "auto") {
    return CameraSource{Kind::Auto, ""};
  }
  if (text == "demo") {
    return CameraSource{Kind::Demo, ""};
  }
  if (text == "none") {
    return CameraSource{Kind::None, ""};
  }
  const auto node = withValue("pipewire:", Kind::PipeWire);
  return node ? node : withValue("file:", Kind::File);
}

std::string cameraSourceText(const CameraSource& source) {
  switch (source.kind) {
    case CameraSource::Kind::Demo:
      return "demo";
    case CameraSource::Kind::PipeWire:
      return "pipewire:" + source.value;
    case CameraSource::Kind::File:
      return "file:" + source.value;
    case CameraSource::Kind::None:
      return "none";
    case CameraSource::Kind::Auto:
      break;
  }
  return "auto";
}

std::string applyCameraSource(std::string_view text, CameraSources* sources) {
  const auto equals = text.find('=');
  const auto side = text.substr(0, equals);
  const auto source =
      equals == std::string_view::npos ? std::nullopt : parseCameraSource(text.substr(equals + 1));
  if (!source || (side != "back" && side != "front")) {
    return fmt::format(
        "'{}' is not a camera source; write back=SOURCE or front=SOURCE, where SOURCE is auto, demo, "
        "pipewire:NODE, file:PATH or none",
        text);
  }
  (side == "back" ? sources->back : sources->front) = *source;
  return "";
}

std::string applyCameraTurn(std::string_view text, CameraSources* sources) {
  const auto equals = std::min(text.find('='), text.size());
  const auto side = text.substr(0, equals);
  const auto how = text.substr(std::min(equals + 1, text.size()));
  auto& turn = side == "back" ? sources->backTurn : sources->frontTurn;
  const bool isAngle = how == "90" || how == "180" || how == "270";
  if ((side != "back" && side != "front") || (!isAngle && how != "mirror")) {
    return fmt::format(
        "'{}' is not a turn; write back=TURN or front=TURN, where TURN is 90, 180, 270 or mirror", text);
  }
  if (isAngle) {
    turn.clockwise = std::stoi(std::string(how));
  } else {
    turn.mirrored = true;
  }
  return "";
}

}  // namespace nivlo
