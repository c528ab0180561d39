// Pictures that tests make and compare.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace nivlo::test {

struct Picture {
  using Color = std::array<std::uint8_t, 3>;  ///< red, green, blue

  int width = 0;
  int height = 0;
  std::vector<Color> pixels;  ///< row by row, from the top left

  const Color& at(int x, int y) const { return pixels[static_cast<std::size_t>(y) * width + x]; }
};

inline constexpr Picture::Color kRed{255, 0, 0};
inline constexpr Picture::Color kGreen{0, 255, 0};
inline constexpr Picture::Color kBlue{0, 0, 255};
inline constexpr Picture::Color kWhite{255, 255, 255};
inline constexpr Picture::Color kBlack{0, 0, 0};

Picture solidPicture(Picture::Color color, int width, int height);

/// Red, green, blue and white quadrants: top left, top right, bottom left, bottom right.
Picture quadrantPicture(int width, int height);

/// Returns whether red, green and blue each differ by at most the tolerance, of 255.
bool isNear(const Picture::Color& color, const Picture::Color& expected, int tolerance = 3);

/// Parses "RRGGBB" in hexadecimal digits. Throws std::invalid_argument when the text begins with none.
Picture::Color parseColor(const std::string& text);

}  // namespace nivlo::test
