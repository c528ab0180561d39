// Looking at what a camera delivers.
#pragma once

#include <condition_variable>
#include <mutex>
#include <vector>

#include "platform/drivers/CameraDriver.hpp"
#include "tests/support/WaitFor.hpp"
#include "tests/support/pictures/Picture.hpp"

namespace nivlo::test {

/// Whether the frame shows the four coloured quarters.
bool showsQuarters(const VideoFrame& frame);

/// Takes a camera's frames.
class FrameTaker {
 public:
  CameraFrameHandler handler();

  /// The first frame that arrives from now on; null when none does in time.
  VideoFramePtr next(std::chrono::milliseconds timeout = kPatience);

  /// How many did not show this colour, of all so far.
  int countOtherThan(const Picture::Color& color) const;

 private:
  mutable std::mutex mutex_;
  std::condition_variable arrived_;
  VideoFramePtr newest_;
  std::size_t count_ = 0;
  std::vector<Picture::Color> colors_;
};

}  // namespace nivlo::test
