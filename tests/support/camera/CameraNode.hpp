// A virtual camera in PipeWire's graph.
#pragma once

#include <memory>
#include <vector>

#include <pipewire/pipewire.h>

#include "linux/handles/Owned.hpp"
#include "tests/support/camera/HostileBuffers.hpp"
#include "tests/support/camera/Options.hpp"
#include "tests/support/pictures/Encoding.hpp"

namespace nivlo::test {

/// Publishes a camera and serves its readers on the given loop, which it quits when PipeWire goes away.
/// `pictures` holds one encoded picture for each mode of `options`, which must outlive this object.
class CameraNode {
 public:
  CameraNode(pw_main_loop* loop, const CameraOptions& options, std::vector<EncodedPicture> pictures);

  /// Returns whether the constructor reached PipeWire.
  bool isConnected() const { return connected_; }

 private:
  static const pw_stream_events kEvents;

  void publish();
  void stateChanged(pw_stream_state state);
  void formatChanged(const spa_pod* format);
  void fillNextBuffer();
  void runClock(bool on);

  pw_main_loop* loop_;
  const CameraOptions& options_;
  std::vector<EncodedPicture> pictures_;
  std::size_t current_ = 0;
  std::uint64_t sequence_ = 0;
  bool connected_ = false;
  spa_source* clock_;
  std::unique_ptr<HostileBuffers> hostile_;  ///< null for a camera that means no harm
  Owned<pw_stream, pw_stream_destroy> stream_;
};

}  // namespace nivlo::test
