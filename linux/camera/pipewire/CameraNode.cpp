#include "linux/camera/pipewire/CameraNode.hpp"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <string_view>
#include <tuple>

namespace nivlo {
namespace {

bool isLetter(char character) { return std::isalpha(static_cast<unsigned char>(character)) != 0; }

// "Backlit webcam" does not name a back camera, so only whole words count.
bool hasWord(const std::string& text, std::string_view word) {
  const auto sameLetter = [](char a, char b) { return std::tolower(static_cast<unsigned char>(a)) == b; };
  for (auto from = text.begin();;) {
    const auto found = std::search(from, text.end(), word.begin(), word.end(), sameLetter);
    if (found == text.end()) {
      return false;
    }
    const auto behind = found + static_cast<std::ptrdiff_t>(word.size());
    const bool starts = found == text.begin() || !isLetter(*(found - 1));
    if (starts && (behind == text.end() || !isLetter(*behind))) {
      return true;
    }
    from = found + 1;
  }
}

AVCaptureDevicePosition positionFromWords(const std::string& text) {
  using enum AVCaptureDevicePosition;
  static constexpr std::array<std::pair<std::string_view, AVCaptureDevicePosition>, 5> kWords{
      {{"front", Front}, {"user", Front}, {"rear", Back}, {"back", Back}, {"world", Back}}};
  for (const auto& [word, position] : kWords) {
    if (hasWord(text, word)) {
      return position;
    }
  }
  return Unspecified;
}

AVCaptureDevicePosition positionOf(std::string_view location, const CameraNode& camera) {
  if (location == "front") {
    return AVCaptureDevicePosition::Front;
  }
  if (location == "back") {
    return AVCaptureDevicePosition::Back;
  }
  if (!location.empty()) {
    return AVCaptureDevicePosition::Unspecified;
  }
  const AVCaptureDevicePosition byName = positionFromWords(camera.name);
  return byName != AVCaptureDevicePosition::Unspecified ? byName : positionFromWords(camera.description);
}

int rotationFrom(std::string_view degrees) {
  int value = 0;
  std::from_chars(degrees.data(), degrees.data() + degrees.size(), value);
  return value == 90 || value == 180 || value == 270 ? value : 0;
}

}  // namespace

CameraNode describeCamera(std::uint32_t id, const PropertyLookup& property) {
  const auto text = [&](const char* key) {
    const char* value = property(key);
    return std::string(value != nullptr ? value : "");
  };
  CameraNode camera;
  camera.id = id;
  camera.serial = text("object.serial");
  camera.name = text("node.name");
  for (const char* key : {"node.description", "node.nick", "node.name"}) {
    if (camera.description.empty()) {
      camera.description = text(key);
    }
  }
  camera.position = positionOf(text("api.libcamera.location"), camera);
  camera.rotation = rotationFrom(text("api.libcamera.rotation"));
  return camera;
}

bool comesBefore(const CameraNode& first, const CameraNode& second) {
  const auto rank = [](const CameraNode& camera) {
    if (camera.onlyGrey) {
      return 3;
    }
    if (camera.position == AVCaptureDevicePosition::Back) {
      return 0;
    }
    return camera.position == AVCaptureDevicePosition::Front ? 2 : 1;
  };
  return std::make_tuple(rank(first), std::cref(first.name), first.id) <
         std::make_tuple(rank(second), std::cref(second.name), second.id);
}

}  // namespace nivlo
