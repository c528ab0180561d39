// An open camera, across unplugging and failures.
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "linux/camera/pipewire/CameraRegistry.hpp"
#include "linux/camera/pipewire/PipeWireLoop.hpp"
#include "linux/camera/pipewire/VideoStream.hpp"
#include "linux/timing/Backoff.hpp"
#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// Keeps a stream to the camera with a given name whenever such a camera is there, and replaces a stream that
/// has failed or gone silent. Trouble is logged once until the camera is back. Created, used and destroyed on
/// the loop's thread, where the handler runs too; the handler must not destroy it.
class CameraCapture {
 public:
  CameraCapture(PipeWireLoop& loop, CameraRegistry& registry, std::string name, CameraFrameHandler onFrame);

  /// To be called when the registry reports a change. The stream is looked after at the loop's next turn.
  void camerasChanged() { timer_.set({}); }

  /// To be called when the registry reports it. Closes the stream at once.
  void connectionLost();

 private:
  using Clock = std::chrono::steady_clock;

  void check();
  bool isSilent() const { return Clock::now() >= silentAt_; }
  void openStream(const CameraNode& camera);
  void dropStream(bool cameraIsGone);
  void frameArrived(const VideoFramePtr& frame);

  PipeWireLoop& loop_;
  CameraRegistry& registry_;
  const std::string name_;
  const CameraFrameHandler onFrame_;
  std::uint32_t target_ = SPA_ID_INVALID;  ///< the node that the newest stream was opened for
  bool failed_ = false;                    ///< the stream has to be replaced
  bool lost_ = false;                      ///< the log says that there is no picture
  Clock::time_point silentAt_;             ///< without a frame until then, the stream counts as silent
  Clock::time_point retryAt_;
  Backoff retryDelay_{std::chrono::milliseconds(200), std::chrono::seconds(5)};
  LoopTimer timer_;
  std::optional<VideoStream> stream_;
};

}  // namespace nivlo
