#include "tests/linux/codes/CodePictures.hpp"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <stdexcept>
#include <utility>

#include <zint.h>

namespace nivlo::test {

namespace {

constexpr int kPixelsPerModule = 3;
constexpr int kQuietModules = 10;

/// The bytes per pixel of a format's first plane, and the range of them that a grey value is written to.
struct Layout {
  int bytes;
  int firstGrey;
  int lastGrey;
};

Layout layoutOf(PixelFormat format) {
  switch (format) {
    case PixelFormat::YUY2:
      return {2, 0, 0};
    case PixelFormat::RGB:
      return {3, 0, 2};
    case PixelFormat::BGRx:
    case PixelFormat::RGBx:
      return {4, 0, 2};
    default:
      return {1, 0, 0};
  }
}

}  // namespace

GreyPicture greyPicture(int width, int height, std::uint8_t value) {
  return {width, height, std::vector<std::uint8_t>(static_cast<std::size_t>(width) * height, value)};
}

GreyPicture drawCode(int symbology, std::string_view bytes, int option) {
  const std::unique_ptr<zint_symbol, void (*)(zint_symbol*)> symbol(ZBarcode_Create(), ZBarcode_Delete);
  symbol->symbology = symbology;
  symbol->input_mode = DATA_MODE;
  symbol->option_2 = option;
  symbol->show_hrt = 0;
  symbol->scale = kPixelsPerModule / 2.0F;
  symbol->whitespace_width = kQuietModules;
  symbol->whitespace_height = kQuietModules;
  const int status = ZBarcode_Encode_and_Buffer(
      symbol.get(), reinterpret_cast<const unsigned char*>(bytes.data()), static_cast<int>(bytes.size()), 0);
  if (status >= ZINT_ERROR) {
    throw std::invalid_argument(symbol->errtxt);
  }
  GreyPicture picture = greyPicture(symbol->bitmap_width, symbol->bitmap_height);
  for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
    picture.pixels[i] = symbol->bitmap[3 * i];
  }
  return picture;
}

GreyPicture drawModules(const std::vector<std::string_view>& rows) {
  const int size = static_cast<int>(rows.size());
  GreyPicture picture = greyPicture((size + 2 * kQuietModules) * kPixelsPerModule,
                                    (size + 2 * kQuietModules) * kPixelsPerModule, 255);
  const GreyPicture module = greyPicture(kPixelsPerModule, kPixelsPerModule, 0);
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      if (rows[y][x] == '#') {
        place(picture, module, (x + kQuietModules) * kPixelsPerModule,
              (y + kQuietModules) * kPixelsPerModule);
      }
    }
  }
  return picture;
}

void place(GreyPicture& onto, const GreyPicture& picture, int x, int y) {
  if (x + picture.width > onto.width || y + picture.height > onto.height) {
    throw std::invalid_argument("the picture does not fit into the other one");
  }
  for (int row = 0; row < picture.height; ++row) {
    std::copy_n(picture.pixels.begin() + row * picture.width, picture.width,
                onto.pixels.begin() + (y + row) * onto.width + x);
  }
}

GreyPicture turned(const GreyPicture& picture) {
  GreyPicture result = greyPicture(picture.height, picture.width);
  for (int y = 0; y < result.height; ++y) {
    for (int x = 0; x < result.width; ++x) {
      result.pixels[y * result.width + x] = picture.pixels[(picture.height - 1 - x) * picture.width + y];
    }
  }
  return result;
}

GreyPicture inverted(GreyPicture picture) {
  for (std::uint8_t& value : picture.pixels) {
    value = static_cast<std::uint8_t>(255 - value);
  }
  return picture;
}

VideoFrame frameOf(const GreyPicture& picture, PixelFormat format, int padding) {
  const Layout layout = layoutOf(format);
  const int stride = picture.width * layout.bytes + padding;
  // Bytes that are not brightness hold 0x55, so that a reader that took them for brightness would fail.
  auto memory =
      std::make_shared<std::vector<std::uint8_t>>(static_cast<std::size_t>(stride) * picture.height, 0x55);
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      for (int at = layout.firstGrey; at <= layout.lastGrey; ++at) {
        (*memory)[static_cast<std::size_t>(y) * stride + x * layout.bytes + at] =
            picture.pixels[y * picture.width + x];
      }
    }
  }
  VideoFrame frame;
  frame.format = format;
  frame.width = picture.width;
  frame.height = picture.height;
  frame.planes[0] = {memory->data(), stride};
  frame.storage = std::move(memory);
  return frame;
}

}  // namespace nivlo::test
