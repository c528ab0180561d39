#include <cstdio>
#include <exception>
#include <memory>

#include <pipewire/pipewire.h>
#include <signal.h>

#include "linux/camera/ImageFile.hpp"
#include "tests/support/camera/CameraNode.hpp"
#include "tests/support/camera/Options.hpp"

namespace {

using namespace nivlo::test;

/// The picture in a file, scaled to the mode's size. Throws std::runtime_error when it cannot be read.
Picture pictureFromFile(const std::string& path, const Mode& mode) {
  const nivlo::ImageLoad load = nivlo::loadImageFile(path);
  if (!load.frame) throw std::runtime_error(load.error);
  const nivlo::VideoFrame& frame = *load.frame;
  const int step = frame.format == nivlo::PixelFormat::RGB ? 3 : 4;
  Picture picture = solidPicture({}, mode.width, mode.height);
  for (int i = 0; i < mode.width * mode.height; ++i) {
    const std::ptrdiff_t x = i % mode.width * frame.width / mode.width;
    const std::ptrdiff_t y = i / mode.width * frame.height / mode.height;
    const std::uint8_t* pixel = frame.planes[0].data + y * frame.planes[0].stride + x * step;
    picture.pixels[i] = {pixel[0], pixel[1], pixel[2]};
  }
  return picture;
}

Picture pictureFor(const CameraOptions& options, const Mode& mode) {
  if (!options.picture.empty()) return pictureFromFile(options.picture, mode);
  return options.color ? solidPicture(*options.color, mode.width, mode.height)
                       : quadrantPicture(mode.width, mode.height);
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
