#include "linux/camera/pipewire/buffers/FrameLayout.hpp"

#include <vector>

#include "linux/camera/pipewire/StreamFormat.hpp"

namespace nivlo {
namespace {

struct PlaneShape {
  int rowBytes;
  int rows;
  int strideDivisor;  ///< the first plane's stride is this many times as long, when planes share a block
};

int half(int size) { return (size + 1) / 2; }

std::vector<PlaneShape> shapesOf(PixelFormat format, int width, int height) {
  switch (format) {
    case PixelFormat::NV12:
      return {{width, height, 1}, {half(width) * 2, half(height), 1}};
    case PixelFormat::I420:
      return {{width, height, 1}, {half(width), half(height), 2}, {half(width), half(height), 2}};
    case PixelFormat::YUY2:
      return {{half(width) * 4, height, 1}};
    case PixelFormat::BGRx:
    case PixelFormat::RGBx:
      return {{width * 4, height, 1}};
    case PixelFormat::RGB:
      return {{width * 3, height, 1}};
  }
  return {};
}

// Senders that do not tell the stride pad each row to a multiple of four bytes.
int usualStride(const PlaneShape& shape) { return (shape.rowBytes + 3) / 4 * 4; }

// The last row need not be padded.
std::size_t bytesNeeded(const PlaneShape& shape, int stride) {
  return static_cast<std::size_t>(stride) * (shape.rows - 1) + shape.rowBytes;
}

std::optional<std::array<Plane, 3>> lay(const std::vector<PlaneShape>& shapes,
                                        std::span<const DataBlock> blocks) {
  const bool shared = blocks.size() == 1;
  if (!shared && blocks.size() != shapes.size()) {
    return std::nullopt;
  }

  std::array<Plane, 3> planes{};
  std::size_t offset = 0;
  const int firstStride = blocks[0].stride != 0 ? blocks[0].stride : usualStride(shapes[0]);
  for (std::size_t i = 0; i < shapes.size(); ++i) {
    const DataBlock& block = shared ? blocks[0] : blocks[i];
    int stride = firstStride / shapes[i].strideDivisor;
    if (!shared) {
      stride = block.stride != 0 ? block.stride : usualStride(shapes[i]);
    }
    if (stride < shapes[i].rowBytes) {
      return std::nullopt;
    }
    if (!shared) {
      offset = 0;
    }
    if (offset > block.bytes.size() || bytesNeeded(shapes[i], stride) > block.bytes.size() - offset) {
      return std::nullopt;
    }
    planes[i] = {block.bytes.data() + offset, stride};
    offset += static_cast<std::size_t>(stride) * shapes[i].rows;
  }
  return planes;
}

}  // namespace

std::optional<std::array<Plane, 3>> layPlanes(PixelFormat format, int width, int height,
                                              std::span<const DataBlock> blocks) {
  return lay(shapesOf(format, width, height), blocks);
}

std::optional<std::array<Plane, 3>> layGreyPlanes(int width, int height, std::span<const DataBlock> blocks) {
  constexpr std::uint8_t kNoColour = 128;
  static const std::vector<std::uint8_t> row(kLongestPictureEdge, kNoColour);
  auto planes = lay({{width, height, 1}}, blocks);
  if (planes) {
    (*planes)[1] = {row.data(), 0};
  }
  return planes;
}

}  // namespace nivlo
