#include "linux/camera/pipewire/buffers/JpegDecoder.hpp"

#include <array>
#include <cstring>

#include <libyuv/convert.h>

namespace nivlo {
namespace {

constexpr int kAlignment = 64;
constexpr int kNoColor = 128;

int roundUp(int value, int step) { return (value + step - 1) / step * step; }

}  // namespace

JpegDecoder::JpegDecoder() : decompressor_(tjInitDecompress()) {}

std::shared_ptr<VideoFrame> JpegDecoder::decode(std::span<const std::uint8_t> jpeg, int width, int height) {
  const int stride = roundUp(width, kAlignment);
  const int rows = roundUp(height, 2);
  const std::size_t lumaSize = static_cast<std::size_t>(stride) * rows;
  const std::shared_ptr<std::uint8_t> memory = pool_.borrow(lumaSize + lumaSize / 2);
  const std::array<Plane, 3> planes{Plane{memory.get(), stride}, Plane{memory.get() + lumaSize, stride / 2},
                                    Plane{memory.get() + lumaSize + lumaSize / 4, stride / 2}};
  if (!decodePlanes(jpeg, planes, width, height)) {
    // After an error in a header, the library goes on in the middle of that header with the next picture.
    decompressor_.reset(tjInitDecompress());
    return nullptr;
  }

  auto frame = std::make_shared<VideoFrame>();
  frame->format = PixelFormat::I420;
  frame->width = width;
  frame->height = height;
  frame->planes = planes;
  frame->matrix = ColorMatrix::BT601;
  frame->range = ColorRange::Full;
  frame->storage = memory;
  return frame;
}

bool JpegDecoder::decodePlanes(std::span<const std::uint8_t> jpeg, const std::array<Plane, 3>& planes,
                               int width, int height) {
  const std::optional<Chroma> chroma = chromaOf(jpeg, width, height);
  if (!chroma) {
    return false;
  }
  Targets targets{};
  for (std::size_t i = 0; i < planes.size(); ++i) {
    targets[i] = {const_cast<std::uint8_t*>(planes[i].data), planes[i].stride};
  }
  const Targets final = targets;
  if (*chroma == Chroma::C422 || *chroma == Chroma::C444) {
    const int sampling = *chroma == Chroma::C422 ? TJSAMP_422 : TJSAMP_444;
    const int stride = roundUp(tjPlaneWidth(1, width, sampling), kAlignment);
    const std::size_t size = static_cast<std::size_t>(stride) * tjPlaneHeight(1, height, sampling);
    chroma_.resize(2 * size);
    targets[1] = {chroma_.data(), stride};
    targets[2] = {chroma_.data() + size, stride};
  }
  std::array<unsigned char*, 3> bytes{targets[0].bytes, targets[1].bytes, targets[2].bytes};
  std::array<int, 3> strides{targets[0].stride, targets[1].stride, targets[2].stride};
  const auto run = [&](int flags) {
    return tjDecompressToYUVPlanes(decompressor_.get(), jpeg.data(), jpeg.size(), bytes.data(), width,
                                   strides.data(), height, flags) == 0;
  };
  // The library tells only its last warning, and damage is often followed by harmless stray bytes. So
  // decoding first stops at the first warning, and goes on only where that one is harmless.
  if (!run(TJFLAG_STOPONWARNING)) {
    if (!isOnlyUntidy()) {
      return false;
    }
    if (!run(0) && tjGetErrorCode(decompressor_.get()) != TJERR_WARNING) {
      return false;
    }
  }
  return finishChroma(*chroma, targets, final, width, height);
}

std::optional<JpegDecoder::Chroma> JpegDecoder::chromaOf(std::span<const std::uint8_t> jpeg, int width,
                                                         int height) const {
  int actualWidth = 0;
  int actualHeight = 0;
  int sampling = 0;
  int colors = 0;
  if (jpeg.empty()) {
    return std::nullopt;
  }
  const int result = tjDecompressHeader3(decompressor_.get(), jpeg.data(), jpeg.size(), &actualWidth,
                                         &actualHeight, &sampling, &colors);
  if (result != 0 && !isOnlyUntidy()) {
    return std::nullopt;
  }
  if (actualWidth != width || actualHeight != height) {
    return std::nullopt;
  }
  if (colors == TJCS_GRAY) {
    return Chroma::None;
  }
  if (colors != TJCS_YCbCr) {
    return std::nullopt;
  }
  switch (sampling) {
    case TJSAMP_420:
      return Chroma::C420;
    case TJSAMP_422:
      return Chroma::C422;
    case TJSAMP_444:
      return Chroma::C444;
    default:
      return std::nullopt;
  }
}

bool JpegDecoder::finishChroma(Chroma chroma, const Targets& decoded, const Targets& final, int width,
                               int height) {
  if (chroma == Chroma::C420) {
    return true;
  }
  if (chroma == Chroma::None) {
    for (const Target& plane : {final[1], final[2]}) {
      std::memset(plane.bytes, kNoColor, static_cast<std::size_t>(plane.stride) * ((height + 1) / 2));
    }
    return true;
  }
  // The luma plane is already in place. libyuv skips a plane whose target is null.
  const auto shrink = chroma == Chroma::C422 ? libyuv::I422ToI420 : libyuv::I444ToI420;
  return shrink(decoded[0].bytes, decoded[0].stride, decoded[1].bytes, decoded[1].stride, decoded[2].bytes,
                decoded[2].stride, nullptr, 0, final[1].bytes, final[1].stride, final[2].bytes,
                final[2].stride, width, height) == 0;
}

// Many cameras put stray bytes between the segments of every picture, which do no harm.
bool JpegDecoder::isOnlyUntidy() const {
  return tjGetErrorCode(decompressor_.get()) == TJERR_WARNING &&
         std::strstr(tjGetErrorStr2(decompressor_.get()), "extraneous bytes") != nullptr;
}

}  // namespace nivlo
