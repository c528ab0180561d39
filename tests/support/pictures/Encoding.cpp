#include "tests/support/pictures/Encoding.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <stdexcept>

#include <turbojpeg.h>

#include "linux/handles/Owned.hpp"

namespace nivlo::test {
namespace {

struct Yuv {
  double y, u, v;
};

class Converter {
 public:
  Converter(const Colorimetry& colorimetry, int height)
      : full_(colorimetry.range.value_or(ColorRange::Limited) == ColorRange::Full),
        red_(matrix(colorimetry, height) == ColorMatrix::BT709 ? 0.2126 : 0.299),
        blue_(matrix(colorimetry, height) == ColorMatrix::BT709 ? 0.0722 : 0.114) {}

  Yuv operator()(const Picture::Color& color) const {
    const double luma = red_ * color[0] + (1 - red_ - blue_) * color[1] + blue_ * color[2];
    const double u = (color[2] - luma) / (2 * (1 - blue_));
    const double v = (color[0] - luma) / (2 * (1 - red_));
    if (full_) {
      return {luma, 128 + u, 128 + v};
    }
    return {16 + luma * 219 / 255, 128 + u * 224 / 255, 128 + v * 224 / 255};
  }

 private:
  static ColorMatrix matrix(const Colorimetry& colorimetry, int height) {
    return colorimetry.matrix.value_or(height >= 720 ? ColorMatrix::BT709 : ColorMatrix::BT601);
  }

  bool full_;
  double red_, blue_;
};

std::uint8_t toByte(double value) {
  return static_cast<std::uint8_t>(std::clamp(std::lround(value), 0L, 255L));
}

int half(int size) { return (size + 1) / 2; }

EncodedPicture emptyPicture(int stride, int rows) {
  return {std::vector<std::uint8_t>(static_cast<std::size_t>(stride) * rows), stride};
}

// The mean chroma of the pixels that share one sample: two in one row, or four in two rows.
Yuv chromaAt(const Picture& picture, const Converter& convert, int x, int y, int rows) {
  Yuv sum{};
  for (int j = 0; j < rows; ++j) {
    for (int i = 0; i < 2; ++i) {
      const Yuv one = convert(
          picture.at(std::min(2 * x + i, picture.width - 1), std::min(rows * y + j, picture.height - 1)));
      sum.u += one.u / (2 * rows);
      sum.v += one.v / (2 * rows);
    }
  }
  return sum;
}

EncodedPicture encodePacked(const Picture& picture, Mode::Format format, int padding) {
  const int step = format == Mode::Format::RGB ? 3 : 4;
  EncodedPicture result = emptyPicture(picture.width * step + padding, picture.height);
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      Picture::Color color = picture.at(x, y);
      if (format == Mode::Format::BGRx) {
        std::swap(color[0], color[2]);
      }
      std::copy(color.begin(), color.end(), result.row(y) + static_cast<std::ptrdiff_t>(x) * step);
    }
  }
  return result;
}

EncodedPicture encodeYuy2(const Picture& picture, const Converter& convert, int padding) {
  EncodedPicture result = emptyPicture(half(picture.width) * 4 + padding, picture.height);
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < half(picture.width); ++x) {
      const Yuv chroma = chromaAt(picture, convert, x, y, 1);
      const auto second = convert(picture.at(std::min(2 * x + 1, picture.width - 1), y));
      const std::array<double, 4> values{convert(picture.at(2 * x, y)).y, chroma.u, second.y, chroma.v};
      std::ranges::transform(values, result.row(y) + 4 * x, toByte);
    }
  }
  return result;
}

EncodedPicture encode420(const Picture& picture, const Converter& convert, bool interleaved, int padding) {
  const int stride = half(picture.width) * 2 + 2 * padding;
  EncodedPicture result = emptyPicture(stride, picture.height + half(picture.height));
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      result.row(y)[x] = toByte(convert(picture.at(x, y)).y);
    }
  }
  std::uint8_t* u = result.row(picture.height);
  std::uint8_t* v = interleaved ? u + 1 : u + static_cast<std::ptrdiff_t>(stride) / 2 * half(picture.height);
  const int step = interleaved ? 2 : 1;
  for (int y = 0; y < half(picture.height); ++y) {
    for (int x = 0; x < half(picture.width); ++x) {
      const Yuv chroma = chromaAt(picture, convert, x, y, 2);
      const std::ptrdiff_t at = static_cast<std::ptrdiff_t>(y) * stride * step / 2 + x * step;
      u[at] = toByte(chroma.u);
      v[at] = toByte(chroma.v);
    }
  }
  return result;
}

}  // namespace

Mode parseMode(const std::string& text) {
  static const std::map<std::string, Mode::Format> kFormats{
      {"YUY2", Mode::Format::YUY2}, {"NV12", Mode::Format::NV12}, {"I420", Mode::Format::I420},
      {"BGRx", Mode::Format::BGRx}, {"RGB", Mode::Format::RGB},   {"MJPEG", Mode::Format::MJPEG},
      {"Grey", Mode::Format::Grey}};
  const std::size_t colon = text.find(':');
  Mode mode{kFormats.at(text.substr(0, colon))};
  if (std::sscanf(text.c_str() + colon, ":%dx%d@%d", &mode.width, &mode.height, &mode.framesPerSecond) != 3) {
    throw std::invalid_argument("'" + text + "' is not a mode; write FORMAT:WIDTHxHEIGHT@FPS");
  }
  return mode;
}

EncodedPicture encode(const Picture& picture, const Mode& mode, const Colorimetry& colorimetry, int padding) {
  const Converter convert(colorimetry, mode.height);
  switch (mode.format) {
    case Mode::Format::BGRx:
    case Mode::Format::RGB:
      return encodePacked(picture, mode.format, padding);
    case Mode::Format::YUY2:
      return encodeYuy2(picture, convert, padding);
    case Mode::Format::NV12:
    case Mode::Format::I420:
    case Mode::Format::Grey:  // the luma plane and some bytes that nobody reads
      return encode420(picture, convert, mode.format == Mode::Format::NV12, padding);
    case Mode::Format::MJPEG:
      break;
  }
  return {encodeJpeg(picture, JpegChroma::C422), 0};
}

std::vector<std::uint8_t> encodeJpeg(const Picture& picture, JpegChroma chroma) {
  static constexpr std::array<int, 3> kSubsampling{TJSAMP_444, TJSAMP_422, TJSAMP_420};
  const Owned<void, tjDestroy> compressor(tjInitCompress());
  unsigned char* bytes = nullptr;
  unsigned long size = 0;
  const int failed =
      tjCompress2(compressor.get(), picture.pixels.data()->data(), picture.width, 0, picture.height, TJPF_RGB,
                  &bytes, &size, kSubsampling.at(static_cast<std::size_t>(chroma)), 90, 0);
  const Owned<unsigned char, tjFree> owner(bytes);
  if (failed != 0) {
    throw std::runtime_error(tjGetErrorStr2(compressor.get()));
  }
  return {bytes, bytes + size};
}

}  // namespace nivlo::test
