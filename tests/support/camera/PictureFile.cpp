#include "tests/support/camera/PictureFile.hpp"

#include "linux/camera/ImageFile.hpp"

namespace nivlo::test {

std::optional<Picture> pictureFromFile(const std::string& path, int width, int height, std::string& error) {
  const ImageLoad load = loadImageFile(path);
  if (!load.frame) {
    error = load.error;
    return std::nullopt;
  }
  const VideoFrame& frame = *load.frame;
  const int step = frame.format == PixelFormat::RGB ? 3 : 4;
  Picture picture = solidPicture({}, width, height);
  for (int y = 0; y < height; ++y) {
    const std::uint8_t* row = frame.planes[0].data +
                              static_cast<std::ptrdiff_t>(y * frame.height / height) * frame.planes[0].stride;
    for (int x = 0; x < width; ++x) {
      const std::uint8_t* pixel = row + static_cast<std::ptrdiff_t>(x * frame.width / width) * step;
      picture.pixels[static_cast<std::size_t>(y) * width + x] = {pixel[0], pixel[1], pixel[2]};
    }
  }
  return picture;
}

}  // namespace nivlo::test
