#include "tests/support/pictures/Picture.hpp"

#include <algorithm>
#include <cstdlib>

namespace nivlo::test {

Picture solidPicture(Picture::Color color, int width, int height) {
  return {width, height, std::vector<Picture::Color>(static_cast<std::size_t>(width) * height, color)};
}

Picture quadrantPicture(int width, int height) {
  constexpr std::array<Picture::Color, 4> kColors{{{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 255}}};
  Picture picture = solidPicture({}, width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      picture.pixels[static_cast<std::size_t>(y) * width + x] =
          kColors[(y < height / 2 ? 0 : 2) + (x < width / 2 ? 0 : 1)];
    }
  }
  return picture;
}

bool isNear(const Picture::Color& color, const Picture::Color& expected, int tolerance) {
  return std::ranges::equal(color, expected, [&](int a, int b) { return std::abs(a - b) <= tolerance; });
}

Picture::Color parseColor(const std::string& text) {
  const auto value = std::stoul(text, nullptr, 16);
  return {static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 8),
          static_cast<std::uint8_t>(value)};
}

}  // namespace nivlo::test
