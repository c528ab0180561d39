// A camera stream whose frames are made on demand, at a steady pace.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// Asks `source` for a frame every `interval`, beginning at once, and hands it on, both on a thread of its
/// own. The source is told the moment the frame stands for; when it answers null, that frame is left out.
/// Frames that come late because the machine is busy are left out too, never caught up on. The destructor
/// waits for at most one frame to be made and handled.
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
  std::jthread thread_;  // last: it uses all of the above
};

}  // namespace nivlo
