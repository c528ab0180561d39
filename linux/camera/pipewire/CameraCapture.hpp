// An open camera that outlasts its own disappearance.
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "linux/camera/pipewire/CameraRegistry.hpp"
#include "linux/camera/pipewire/EventLoop.hpp"
#include "linux/camera/pipewire/VideoStream.hpp"
#include "linux/timing/Backoff.hpp"
#include "platform/drivers/CameraDriver.hpp"

namespace nivlo::pipewire {

/// Keeps a stream to the camera of a name, whenever there is such a camera, and replaces a stream that has
/// failed or fallen silent. Created, used and destroyed on the loop's thread, but not from within the
/// handler.
class CameraCapture {
 public:
  CameraCapture(EventLoop& loop, CameraRegistry& registry, std::string name, CameraFrameHandler onFrame);

  /// To be called when the registry says so. It acts later.
  void camerasChanged() { timer_.set({}); }

  /// Gives up the stream at once.
  void connectionLost();

 private:
  using Clock = std::chrono::steady_clock;

  void check();
  bool isSilent() const { return Clock::now() >= silentAt_; }
  void openStream(const CameraNode& camera);
  void dropStream(bool cameraIsGone);
  void frameArrived(const VideoFramePtr& frame);

  EventLoop& loop_;
  CameraRegistry& registry_;
  const std::string name_;
  const CameraFrameHandler onFrame_;
  std::uint32_t target_ = SPA_ID_INVALID;  ///< the node that the stream is or was for
  bool failed_ = false;
  bool lost_ = false;
  Clock::time_point silentAt_;  ///< when to lose patience with the stream
  Clock::time_point retryAt_;
  Backoff retryDelay_{std::chrono::milliseconds(200), std::chrono::seconds(5)};
  LoopTimer timer_;
  std::optional<VideoStream> stream_;
};

}  // namespace nivlo::pipewire
