#include "linux/codes/picture/LumaPicture.hpp"

#include <algorithm>
#include <climits>
#include <cmath>

#include <libyuv/convert.h>
#include <libyuv/convert_from_argb.h>
#include <libyuv/planar_functions.h>

namespace nivlo {

namespace {

// More than any camera delivers, and small enough that a row's length in bytes fits an int.
constexpr int kMaxFrameSize = 1 << 20;

/// Counts the bytes per pixel of a format's first plane.
int bytesPerPixel(PixelFormat format) {
  switch (format) {
    case PixelFormat::NV12:
    case PixelFormat::I420:
      return 1;
    case PixelFormat::YUY2:
      return 2;
    case PixelFormat::RGB:
      return 3;
    case PixelFormat::BGRx:
    case PixelFormat::RGBx:
      return 4;
  }
  return 0;
}

bool holdsPicture(const VideoFrame& frame) {
  const Plane& plane = frame.planes[0];
  const int bytes = bytesPerPixel(frame.format);
  if (!plane.data || bytes == 0) {
    return false;
  }
  if (frame.width < 1 || frame.height < 1 || frame.width > kMaxFrameSize || frame.height > kMaxFrameSize) {
    return false;
  }
  return plane.stride >= frame.width * bytes && plane.stride <= INT_MAX / frame.height;
}

/// libyuv names formats after little-endian words, so what it calls ARGB lies in memory as B, G, R, A.
/// Returns 0 on success.
int convert(const VideoFrame& frame, std::uint8_t* luma, int stride) {
  const auto& [data, sourceStride] = frame.planes[0];
  switch (frame.format) {
    case PixelFormat::YUY2:
      return libyuv::YUY2ToY(data, sourceStride, luma, stride, frame.width, frame.height);
    case PixelFormat::BGRx:
      return libyuv::ARGBToJ400(data, sourceStride, luma, stride, frame.width, frame.height);
    case PixelFormat::RGBx:
      return libyuv::ABGRToJ400(data, sourceStride, luma, stride, frame.width, frame.height);
    case PixelFormat::RGB:
      return libyuv::RAWToJ400(data, sourceStride, luma, stride, frame.width, frame.height);
    case PixelFormat::NV12:
    case PixelFormat::I420:
      break;
  }
  return -1;
}

}  // namespace

void LumaBuffer::resize(int width, int height) {
  pixels_.resize(static_cast<std::size_t>(width) * height);
  width_ = width;
  height_ = height;
}

void LumaBuffer::copyFrom(const LumaPicture& picture) {
  resize(picture.width, picture.height);
  for (int y = 0; y < height_; ++y) {
    std::copy_n(picture.row(y), width_, row(y));
  }
}

void LumaBuffer::fill(const Quad& quad, std::uint8_t value) {
  for (int y = 0; y < height_; ++y) {
    double left = HUGE_VAL;
    double right = -HUGE_VAL;
    for (int i = 0; i < 4; ++i) {
      const CGPoint& a = quad[i];
      const CGPoint& b = quad[(i + 1) % 4];
      if (y < std::min(a.y, b.y) || y > std::max(a.y, b.y)) {
        continue;
      }
      const double along = a.y == b.y ? 0 : (y - a.y) / (b.y - a.y);
      const double x = a.x + along * (b.x - a.x);
      left = std::min({left, x, a.y == b.y ? b.x : x});
      right = std::max({right, x, a.y == b.y ? b.x : x});
    }
    const int first = static_cast<int>(std::floor(std::clamp(left, 0.0, static_cast<double>(width_))));
    const int last = static_cast<int>(std::ceil(std::clamp(right, -1.0, width_ - 1.0)));
    if (first <= last) {
      std::fill(row(y) + first, row(y) + last + 1, value);
    }
  }
}

std::optional<LumaPicture> lumaOf(const VideoFrame& frame, LumaBuffer& buffer) {
  if (!holdsPicture(frame)) {
    return std::nullopt;
  }
  if (frame.format == PixelFormat::NV12 || frame.format == PixelFormat::I420) {
    return LumaPicture{frame.planes[0].data, frame.width, frame.height, frame.planes[0].stride};
  }
  if (frame.width > INT_MAX / frame.height) {
    return std::nullopt;
  }
  buffer.resize(frame.width, frame.height);
  if (convert(frame, buffer.row(0), frame.width) != 0) {
    return std::nullopt;
  }
  return buffer.picture();
}

}  // namespace nivlo
