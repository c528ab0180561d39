#include "tests/linux/pipewire/Frames.hpp"

#include <algorithm>

#include "host/render/PictureConverter.hpp"

namespace nivlo::test {
namespace {

/// What subsampling and compression do to a colour.
constexpr int kTolerance = 12;

/// The frame as a viewer would see it, but neither turned nor mirrored.
Picture shown(const VideoFrame& frame) {
  Pixels pixels;
  pixels.resize(frame.width, frame.height);
  PictureConverter().convert({std::make_shared<VideoFrame>(frame), {frame.width, frame.height}},
                             pixels.view());
  Picture picture{frame.width, frame.height, {}};
  for (std::size_t i = 0; i < pixels.data.size(); i += 4) {
    picture.pixels.push_back({pixels.data[i + 2], pixels.data[i + 1], pixels.data[i]});
  }
  return picture;
}

}  // namespace

bool showsQuarters(const VideoFrame& frame) {
  const Picture picture = shown(frame);
  const Picture expected = quadrantPicture(frame.width, frame.height);
  for (const int x : {1, frame.width / 4, frame.width * 3 / 4, frame.width - 2}) {
    for (const int y : {1, frame.height / 4, frame.height * 3 / 4, frame.height - 2}) {
      if (!isNear(picture.at(x, y), expected.at(x, y), kTolerance)) return false;
    }
  }
  return true;
}

CameraFrameHandler FrameTaker::handler() {
  return [this](VideoFramePtr frame) {
    const std::lock_guard lock(mutex_);
    colors_.push_back(shown(*frame).at(frame->width / 2, frame->height / 2));
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
  return static_cast<int>(std::count_if(
      colors_.begin(), colors_.end(), [&](const auto& other) { return !isNear(color, other, kTolerance); }));
}

}  // namespace nivlo::test
