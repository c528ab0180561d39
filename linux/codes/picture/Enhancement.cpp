#include "linux/codes/picture/Enhancement.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>

#include <libyuv/scale.h>

namespace nivlo {

namespace {

// Size in pixels of the parts whose contrast is evened: about as large as a few bars or modules.
constexpr int kPart = 24;
// Mean deviation from a part's mean that EvenContrast aims at.
constexpr int kContrast = 50;
// Mean deviation that noise alone can reach. Parts with less are amplified no further.
constexpr int kNoise = 6;

/// Replaces each pixel by the mean of about a part's area around it. `parts` is scratch memory.
void blur(const LumaPicture& picture, LumaBuffer& parts, LumaBuffer& blurred) {
  const int columns = std::max(1, picture.width / kPart);
  const int rows = std::max(1, picture.height / kPart);
  parts.resize(columns, rows);
  libyuv::ScalePlane(picture.pixels, picture.stride, picture.width, picture.height, parts.row(0), columns,
                     columns, rows, libyuv::kFilterBox);
  blurred.resize(picture.width, picture.height);
  libyuv::ScalePlane(parts.row(0), columns, columns, rows, blurred.row(0), picture.width, picture.width,
                     picture.height, libyuv::kFilterBilinear);
}

/// Unsharp mask: adds to each pixel its difference from the mean of the 3 x 3 pixels around it. The outermost
/// pixels stay as they are.
void sharpen(const LumaPicture& picture, LumaBuffer& sharpened) {
  sharpened.copyFrom(picture);
  const int end = picture.width - 1;
  for (int y = 1; y < picture.height - 1; ++y) {
    const std::uint8_t* above = picture.row(y - 1);
    const std::uint8_t* here = picture.row(y);
    const std::uint8_t* below = picture.row(y + 1);
    std::uint8_t* out = sharpened.row(y);
    // Sixteen bits are enough for every value here, which lets the compiler process many pixels at once.
    for (int x = 1; x < end; ++x) {
      const auto sum =
          static_cast<std::int16_t>(above[x - 1] + above[x] + above[x + 1] + here[x - 1] + here[x] +
                                    here[x + 1] + below[x - 1] + below[x] + below[x + 1]);
      const auto off = static_cast<std::int16_t>(9 * here[x] - sum);
      const auto sharp = static_cast<std::int16_t>(here[x] + (off >> 3));
      out[x] = static_cast<std::uint8_t>(std::clamp<std::int16_t>(sharp, 0, 255));
    }
  }
}

void invert(const LumaPicture& picture, LumaBuffer& negative) {
  negative.resize(picture.width, picture.height);
  for (int y = 0; y < picture.height; ++y) {
    std::transform(picture.row(y), picture.row(y) + picture.width, negative.row(y),
                   [](std::uint8_t luma) { return static_cast<std::uint8_t>(255 - luma); });
  }
}

void evenContrast(const LumaPicture& picture, LumaBuffer& even) {
  LumaBuffer parts;
  LumaBuffer mean;
  LumaBuffer contrast;
  const int width = picture.width;
  blur(picture, parts, mean);
  even.resize(picture.width, picture.height);
  for (int y = 0; y < picture.height; ++y) {
    const std::uint8_t* in = picture.row(y);
    const std::uint8_t* around = mean.row(y);
    std::uint8_t* out = even.row(y);
    for (int x = 0; x < width; ++x) {
      out[x] = static_cast<std::uint8_t>(std::abs(in[x] - around[x]));
    }
  }
  blur(even.picture(), parts, contrast);
  std::array<int, 256> gain;
  for (int spread = 0; spread < 256; ++spread) {
    gain[spread] = 256 * kContrast / std::max(kNoise, spread);
  }
  for (int y = 0; y < picture.height; ++y) {
    const std::uint8_t* in = picture.row(y);
    const std::uint8_t* around = mean.row(y);
    const std::uint8_t* spread = contrast.row(y);
    std::uint8_t* out = even.row(y);
    for (int x = 0; x < width; ++x) {
      const int off = (in[x] - around[x]) * gain[spread[x]] >> 8;
      out[x] = static_cast<std::uint8_t>(std::clamp(128 + off, 0, 255));
    }
  }
}

}  // namespace

LumaPicture enhanced(const LumaPicture& picture, Enhancement enhancement, LumaBuffer& buffer) {
  switch (enhancement) {
    case Enhancement::None:
      return picture;
    case Enhancement::Sharp:
      sharpen(picture, buffer);
      break;
    case Enhancement::EvenContrast:
      evenContrast(picture, buffer);
      break;
    case Enhancement::Inverted:
      invert(picture, buffer);
      break;
  }
  return buffer.picture();
}

}  // namespace nivlo
