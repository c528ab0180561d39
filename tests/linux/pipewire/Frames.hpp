// Checks of the frames that a camera delivers.
#pragma once

#include <condition_variable>
#include <mutex>
#include <vector>

#include "platform/drivers/CameraDriver.hpp"
#include "tests/support/WaitFor.hpp"
#include "tests/support/pictures/Picture.hpp"

namespace nivlo::test {

/// Returns whether the frame shows quadrantPicture().
bool showsQuadrants(const VideoFrame& frame);

/// Receives a camera's frames.
class FrameWatcher {
 public:
  CameraFrameHandler handler();

  /// Waits for the next frame to arrive; null when none does in time.
  VideoFramePtr next(std::chrono::milliseconds timeout = kPatience);

  /// The number of frames so far that do not have this colour in their centre.
  int countOtherThan(const Picture::Color& color) const;

 private:
  mutable std::mutex mutex_;
  std::condition_variable arrived_;
  VideoFramePtr newest_;
  std::size_t count_ = 0;
  std::vector<Picture::Color> colors_;
};

}  // namespace nivlo::test
