// A camera stream whose frames are made at a steady pace.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// Asks `source` for a frame every `interval`, starting at once, and hands the frame on, both on a thread of
/// its own. The source gets the time that the frame stands for. No frame is delivered where it returns null.
/// When the machine is too busy, the frames that are due in the meantime are skipped and not made up for. The
/// destructor waits until the frame in the making, if any, has been handled.
class PacedStream final : public CameraStream {
 public:
  using Clock = std::chrono::steady_clock;
  using FrameSource = std::function<VideoFramePtr(Clock::time_point)>;

  PacedStream(Clock::duration interval, FrameSource source, CameraFrameHandler onFrame);

 private:
  void run(const std::stop_token& stop);

  const Clock::duration interval_;
  const FrameSource source_;
  const CameraFrameHandler onFrame_;
  std::mutex mutex_;
  std::condition_variable_any wake_;
  std::jthread thread_;  // must be last, because the thread uses the other fields
};

}  // namespace nivlo
