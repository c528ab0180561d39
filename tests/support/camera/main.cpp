#include <cstdio>
#include <memory>

#include <pipewire/pipewire.h>
#include <signal.h>

#include "tests/support/camera/CameraNode.hpp"
#include "tests/support/camera/Options.hpp"
#include "tests/support/camera/PictureFile.hpp"

namespace {

using namespace nivlo::test;

std::optional<std::vector<EncodedPicture>> encodeForAllModes(const CameraOptions& options) {
  std::vector<EncodedPicture> encoded;
  for (const Mode& mode : options.modes) {
    std::optional<Picture> picture = quadrantPicture(mode.width, mode.height);
    std::string error;
    if (options.color) picture = solidPicture(*options.color, mode.width, mode.height);
    if (!options.picture.empty()) picture = pictureFromFile(options.picture, mode.width, mode.height, error);
    if (!picture) {
      std::fprintf(stderr, "%s: %s\n", options.picture.c_str(), error.c_str());
      return std::nullopt;
    }
    encoded.push_back(encode(*picture, mode, options.colorimetry, options.padding));
  }
  return encoded;
}

int run(const CameraOptions& options, std::vector<EncodedPicture> pictures) {
  pw_init(nullptr, nullptr);
  const std::unique_ptr<pw_main_loop, decltype(&pw_main_loop_destroy)> loop(pw_main_loop_new(nullptr),
                                                                            pw_main_loop_destroy);
  const auto quit = [](void* mainLoop, int) { pw_main_loop_quit(static_cast<pw_main_loop*>(mainLoop)); };
  for (const int number : {SIGTERM, SIGINT}) {
    pw_loop_add_signal(pw_main_loop_get_loop(loop.get()), number, quit, loop.get());
  }
  const CameraNode camera(loop.get(), options, std::move(pictures));
  if (!camera.isConnected()) {
    std::fputs("PipeWire cannot be reached\n", stderr);
    return 1;
  }
  pw_main_loop_run(loop.get());
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  const std::optional<CameraOptions> options = parseOptions({arguments + 1, arguments + count});
  if (!options) return 2;
  std::optional<std::vector<EncodedPicture>> pictures = encodeForAllModes(*options);
  return pictures ? run(*options, std::move(*pictures)) : 1;
}
