#include "tests/linux/pipewire/Frames.hpp"

#include <algorithm>

#include "host/render/PictureConverter.hpp"

namespace nivlo::test {
namespace {

/// The largest change of a colour by subsampling and compression, of 255.
constexpr int kTolerance = 12;

/// The frame as it would be shown, but neither rotated nor mirrored.
Pixels shown(const VideoFrame& frame) {
  Pixels pixels;
  pixels.resize(frame.width, frame.height);
  PictureConverter().convert({std::make_shared<VideoFrame>(frame), {frame.width, frame.height}},
                             pixels.span());
  return pixels;
}

Picture::Color colorAt(Pixels& pixels, int x, int y) {
  const auto* pixel = pixels.span().at(x, y);
  return {pixel[2], pixel[1], pixel[0]};
}

}  // namespace

bool showsQuadrants(const VideoFrame& frame) {
  Pixels pixels = shown(frame);
  const Picture expected = quadrantPicture(frame.width, frame.height);
  for (const int x : {1, frame.width / 4, frame.width * 3 / 4, frame.width - 2}) {
    for (const int y : {1, frame.height / 4, frame.height * 3 / 4, frame.height - 2}) {
      if (!isNear(colorAt(pixels, x, y), expected.at(x, y), kTolerance)) {
        return false;
      }
    }
  }
  return true;
}

CameraFrameHandler FrameWatcher::handler() {
  return [this](VideoFramePtr frame) {
    const std::lock_guard lock(mutex_);
    Pixels pixels = shown(*frame);
    colors_.push_back(colorAt(pixels, frame->width / 2, frame->height / 2));
    newest_ = std::move(frame);
    ++count_;
    arrived_.notify_all();
  };
}

VideoFramePtr FrameWatcher::next(std::chrono::milliseconds timeout) {
  std::unique_lock lock(mutex_);
  const std::size_t seen = count_;
  const bool came = arrived_.wait_for(lock, timeout, [&] { return count_ > seen; });
  return came ? newest_ : nullptr;
}

int FrameWatcher::countOtherThan(const Picture::Color& color) const {
  const std::lock_guard lock(mutex_);
  return static_cast<int>(std::count_if(
      colors_.begin(), colors_.end(), [&](const auto& other) { return !isNear(color, other, kTolerance); }));
}

}  // namespace nivlo::test
