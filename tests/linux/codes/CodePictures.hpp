// Draws pictures of codes for tests.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/drivers/VideoFrame.hpp"

namespace nivlo::test {

/// Grey values, row by row, without padding.
struct GreyPicture {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> pixels;
};

/// Returns a picture of one grey value.
GreyPicture greyPicture(int width, int height, std::uint8_t value = 200);

/// Draws a code on white with its quiet zone, three pixels per module. `symbology` is zint's number for it,
/// and `option` is what zint calls option_2. Encodes the bytes as they are, and throws std::invalid_argument
/// if the symbology cannot hold them.
GreyPicture drawCode(int symbology, std::string_view bytes, int option = 0);

/// Draws a code from its modules, of which '#' is a dark one, for codes that no writer agrees to draw.
GreyPicture drawModules(const std::vector<std::string_view>& rows);

/// Copies a picture into another at (x, y). Throws std::invalid_argument if it does not fit.
void place(GreyPicture& onto, const GreyPicture& picture, int x, int y);

/// Returns the picture after a quarter turn clockwise.
GreyPicture turned(const GreyPicture& picture);

/// Returns the picture with dark and light swapped.
GreyPicture inverted(GreyPicture picture);

/// Returns the picture as a camera would deliver it, with `padding` more bytes per row than needed.
VideoFrame frameOf(const GreyPicture& picture, PixelFormat format = PixelFormat::NV12, int padding = 0);

}  // namespace nivlo::test
