// nivlo-test-camera: a PipeWire camera for tests.
#include <cstdio>
#include <exception>

#include <pipewire/pipewire.h>
#include <signal.h>

#include "linux/handles/Owned.hpp"
#include "tests/support/camera/CameraNode.hpp"
#include "tests/support/camera/Options.hpp"
#include "tests/support/pictures/PictureFile.hpp"

namespace {

using namespace nivlo;
using namespace nivlo::test;

/// Scales the picture to the mode's size by taking the nearest pixel.
Picture scaled(const Picture& whole, const Mode& mode) {
  Picture picture = solidPicture({}, mode.width, mode.height);
  for (int i = 0; i < mode.width * mode.height; ++i) {
    picture.pixels[i] =
        whole.at(i % mode.width * whole.width / mode.width, i / mode.width * whole.height / mode.height);
  }
  return picture;
}

Picture pictureFor(const CameraOptions& options, const Mode& mode) {
  if (!options.picture.empty()) {
    return scaled(readPicture(options.picture), mode);
  }
  return options.color ? solidPicture(*options.color, mode.width, mode.height)
                       : quadrantPicture(mode.width, mode.height);
}

int run(const CameraOptions& options, std::vector<EncodedPicture> pictures) {
  pw_init(nullptr, nullptr);
  const Owned<pw_main_loop, pw_main_loop_destroy> loop(pw_main_loop_new(nullptr));
  const auto quit = [](void* mainLoop, int) { pw_main_loop_quit(static_cast<pw_main_loop*>(mainLoop)); };
  for (const int number : {SIGTERM, SIGINT}) {
    pw_loop_add_signal(pw_main_loop_get_loop(loop.get()), number, quit, loop.get());
  }
  const CameraNode camera(loop.get(), options, std::move(pictures));
  if (!camera.isConnected()) {
    std::fputs("nivlo-test-camera: cannot reach PipeWire; check that its daemon runs\n", stderr);
    return 1;
  }
  pw_main_loop_run(loop.get());
  return 0;
}

}  // namespace

int main(int count, char** arguments) try {
  const CameraOptions options = parseOptions({arguments + 1, arguments + count});
  std::vector<EncodedPicture> pictures;
  for (const Mode& mode : options.modes) {
    pictures.push_back(encode(pictureFor(options, mode), mode, options.colorimetry, options.padding));
  }
  return run(options, std::move(pictures));
} catch (const std::exception& problem) {
  std::fprintf(stderr, "nivlo-test-camera: %s\n", problem.what());
  return 2;
}
