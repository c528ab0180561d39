#include "tests/linux/pipewire/Frames.hpp"

#include <algorithm>
#include <cmath>

namespace nivlo::test {
namespace {

struct Yuv {
  double y, u, v;
};

Yuv yuvAt(const VideoFrame& frame, int x, int y) {
  const auto at = [&](int plane, int column, int row) {
    return static_cast<double>(frame.planes.at(plane).data[row * frame.planes.at(plane).stride + column]);
  };
  switch (frame.format) {
    case PixelFormat::NV12:
      return {at(0, x, y), at(1, x / 2 * 2, y / 2), at(1, x / 2 * 2 + 1, y / 2)};
    case PixelFormat::I420:
      return {at(0, x, y), at(1, x / 2, y / 2), at(2, x / 2, y / 2)};
    default:
      return {at(0, 2 * x, y), at(0, x / 2 * 4 + 1, y), at(0, x / 2 * 4 + 3, y)};
  }
}

Picture::Color fromYuv(const VideoFrame& frame, Yuv yuv) {
  const bool full = frame.range == ColorRange::Full;
  const double red = frame.matrix == ColorMatrix::BT709 ? 0.2126 : 0.299;
  const double blue = frame.matrix == ColorMatrix::BT709 ? 0.0722 : 0.114;
  const double luma = full ? yuv.y : (yuv.y - 16) * 255 / 219;
  const double r = luma + (yuv.v - 128) * (full ? 1 : 255.0 / 224) * 2 * (1 - red);
  const double b = luma + (yuv.u - 128) * (full ? 1 : 255.0 / 224) * 2 * (1 - blue);
  const double g = (luma - red * r - blue * b) / (1 - red - blue);
  const auto byte = [](double value) { return static_cast<std::uint8_t>(std::clamp(value, 0.0, 255.0)); };
  return {byte(r), byte(g), byte(b)};
}

}  // namespace

Picture::Color colorAt(const VideoFrame& frame, int x, int y) {
  const std::uint8_t* row = frame.planes[0].data + static_cast<std::ptrdiff_t>(y) * frame.planes[0].stride;
  switch (frame.format) {
    case PixelFormat::BGRx:
      return {row[4 * x + 2], row[4 * x + 1], row[4 * x]};
    case PixelFormat::RGBx:
      return {row[4 * x], row[4 * x + 1], row[4 * x + 2]};
    case PixelFormat::RGB:
      return {row[3 * x], row[3 * x + 1], row[3 * x + 2]};
    default:
      return fromYuv(frame, yuvAt(frame, x, y));
  }
}

bool isAlike(const Picture::Color& first, const Picture::Color& second) {
  return std::equal(first.begin(), first.end(), second.begin(),
                    [](int a, int b) { return std::abs(a - b) <= 12; });
}

bool showsQuarters(const VideoFrame& frame) {
  const Picture expected = quadrantPicture(frame.width, frame.height);
  for (const int x : {1, frame.width / 4, frame.width * 3 / 4, frame.width - 2}) {
    for (const int y : {1, frame.height / 4, frame.height * 3 / 4, frame.height - 2}) {
      if (!isAlike(colorAt(frame, x, y), expected.at(x, y))) return false;
    }
  }
  return true;
}

CameraFrameHandler FrameTaker::handler() {
  return [this](VideoFramePtr frame) {
    const std::lock_guard lock(mutex_);
    colors_.push_back(colorAt(*frame, frame->width / 2, frame->height / 2));
    newest_ = std::move(frame);
    ++count_;
    arrived_.notify_all();
  };
}

VideoFramePtr FrameTaker::next(std::chrono::milliseconds timeout) {
  std::unique_lock lock(mutex_);
  const std::size_t seen = count_;
  const bool came = arrived_.wait_for(lock, timeout, [&] { return count_ > seen; });
  return came ? newest_ : nullptr;
}

int FrameTaker::countOtherThan(const Picture::Color& color) const {
  const std::lock_guard lock(mutex_);
  return static_cast<int>(std::count_if(colors_.begin(), colors_.end(),
                                        [&](const auto& other) { return !isAlike(color, other); }));
}

}  // namespace nivlo::test
