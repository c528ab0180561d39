// Pictures of codes for tests.
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

GreyPicture greyPicture(int width, int height, std::uint8_t value = 200);

/// A code on white with its quiet zone, three pixels a module. `symbology` is zint's number, `option` its
/// second option. The bytes go into the code as they are. Throws std::invalid_argument when they cannot.
GreyPicture drawCode(int symbology, std::string_view bytes, int option = 0);

/// A code of the modules given, '#' for a dark one; for what no writer agrees to draw.
GreyPicture drawModules(const std::vector<std::string_view>& rows);

/// Copies a picture into another, which must be large enough.
void place(GreyPicture& onto, const GreyPicture& picture, int x, int y);

/// A quarter turn clockwise.
GreyPicture turned(const GreyPicture& picture);
GreyPicture inverted(GreyPicture picture);

/// The picture as a camera would deliver it, rows `padding` bytes longer than they must be.
VideoFrame frameOf(const GreyPicture& picture, PixelFormat format = PixelFormat::NV12, int padding = 0);

}  // namespace nivlo::test
