// Reads pictures from files.
#pragma once

#include <filesystem>
#include <stdexcept>

#include "linux/camera/ImageFile.hpp"
#include "tests/support/pictures/Picture.hpp"

namespace nivlo::test {

/// Throws std::runtime_error with the cause when the file cannot be read.
inline Picture readPicture(const std::filesystem::path& path) {
  const auto [frame, error] = loadImageFile(path);
  if (!frame) {
    throw std::runtime_error(error);
  }
  Picture picture{frame->width, frame->height, {}};
  for (int y = 0; y < frame->height; ++y) {
    const std::uint8_t* pixel =
        frame->planes[0].data + static_cast<std::ptrdiff_t>(y) * frame->planes[0].stride;
    for (int x = 0; x < frame->width; ++x, pixel += 3) {
      picture.pixels.push_back({pixel[0], pixel[1], pixel[2]});
    }
  }
  return picture;
}

}  // namespace nivlo::test
