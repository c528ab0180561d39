// The formats in which a virtual camera writes its picture into a buffer.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/drivers/VideoFrame.hpp"
#include "tests/support/pictures/Picture.hpp"

namespace nivlo::test {

/// A format, size and rate that a camera offers.
struct Mode {
  enum class Format { YUY2, NV12, I420, BGRx, RGB, MJPEG, Grey };
  Format format = Format::YUY2;
  int width = 640;
  int height = 480;
  int framesPerSecond = 30;
};

/// A camera's words for its colours; empty where it does not tell.
struct Colorimetry {
  std::optional<ColorMatrix> matrix;
  std::optional<ColorRange> range;
};

struct EncodedPicture {
  std::vector<std::uint8_t> bytes;
  int stride = 0;  ///< bytes from a row of the first plane to the next; 0 for JPEG

  std::uint8_t* row(int y) { return bytes.data() + static_cast<std::ptrdiff_t>(y) * stride; }
};

/// Parses "FORMAT:WIDTHxHEIGHT@FPS". Throws std::invalid_argument or std::out_of_range for any other text.
Mode parseMode(const std::string& text);

/// Encodes the picture, which has the mode's size, in the mode's format. Rows end in `padding` unused bytes
/// (luma rows of NV12 and I420 in twice as many); a JPEG has no padding. Colorimetry that is not told is
/// what receivers assume: limited range, and BT.709 from 720 rows up or BT.601 below.
EncodedPicture encode(const Picture& picture, const Mode& mode, const Colorimetry& colorimetry, int padding);

/// The chroma samples that a JPEG keeps: one for each pixel (4:4:4), for two pixels of a row (4:2:2) or for
/// four pixels in a square (4:2:0).
enum class JpegChroma { C444, C422, C420 };
std::vector<std::uint8_t> encodeJpeg(const Picture& picture, JpegChroma chroma);

}  // namespace nivlo::test
