// What a camera delivers.
#pragma once

#include <mutex>
#include <vector>

#include "platform/drivers/CameraDriver.hpp"
#include "tests/support/WaitFor.hpp"

namespace nivlo {

/// Keeps every frame, and so the memory of each.
class Recorder {
 public:
  CameraFrameHandler handler() {
    return [this](VideoFramePtr frame) {
      const std::lock_guard lock(mutex_);
      frames_.push_back(std::move(frame));
    };
  }
  std::vector<VideoFramePtr> frames() const {
    const std::lock_guard lock(mutex_);
    return frames_;
  }
  bool awaits(std::size_t count) const {
    return test::waitFor([&] { return frames().size() >= count; });
  }

 private:
  mutable std::mutex mutex_;
  std::vector<VideoFramePtr> frames_;
};

}  // namespace nivlo
