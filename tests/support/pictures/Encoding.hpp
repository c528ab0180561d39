// How a virtual camera writes its picture into a buffer.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/drivers/VideoFrame.hpp"
#include "tests/support/pictures/Picture.hpp"

namespace nivlo::test {

/// One way in which a camera can be read.
struct Mode {
  enum class Format { YUY2, NV12, I420, BGRx, RGB, MJPEG };
  Format format = Format::YUY2;
  int width = 640;
  int height = 480;
  int framesPerSecond = 30;
};

/// What a camera says about its colours, or does not say.
struct Colorimetry {
  std::optional<ColorMatrix> matrix;
  std::optional<ColorRange> range;
};

struct EncodedPicture {
  std::vector<std::uint8_t> bytes;
  int stride = 0;  ///< bytes a row of the first plane

  std::uint8_t* row(int y) { return bytes.data() + static_cast<std::ptrdiff_t>(y) * stride; }
};

/// "FORMAT:WIDTHxHEIGHT@FPS". Throws std::invalid_argument or std::out_of_range where it is none.
Mode parseMode(const std::string& text);

/// The picture, of the mode's size, in the mode's format. Rows are `padding` bytes longer than they must be,
/// except in a JPEG. Unsaid colorimetry is what a receiver takes for granted: BT.709 from 720 rows up, else
/// BT.601, limited range.
EncodedPicture encode(const Picture& picture, const Mode& mode, const Colorimetry& colorimetry, int padding);

/// A JPEG with the chroma of every pixel (4:4:4), half of it in each row (4:2:2), or a quarter in all
/// (4:2:0).
enum class JpegChroma { C444, C422, C420 };
std::vector<std::uint8_t> encodeJpeg(const Picture& picture, JpegChroma chroma);

}  // namespace nivlo::test
