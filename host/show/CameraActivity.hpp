// Keeps account of the cameras that are open.
#pragma once

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "host/show/ObservedCameras.hpp"

namespace nivlo {

/// Knows which cameras are open, as long as follow() is told of all their events. Main thread only.
class CameraActivity {
 public:
  void follow(CameraEvent event, const ObservedCamera& camera);
  /// To be called when the cameras that were listed so far only stood in, and real ones are listed instead.
  void replaced() const { onReplaced_(); }
  /// Calls `handler` at each such change from now on, instead of an earlier handler.
  void onReplaced(std::function<void()> handler) { onReplaced_ = std::move(handler); }

  /// Calls `handler` after each event from now on, instead of an earlier handler.
  void onEvent(std::function<void()> handler) { onEvent_ = std::move(handler); }

  /// The open camera. While a session switches cameras two are open, and the one opened last counts.
  std::optional<ObservedCamera> open() const;
  /// The number of times that a camera has been opened so far.
  unsigned openings() const { return openings_; }
  /// The number of times that a camera could not be opened so far.
  unsigned refusals() const { return refusals_; }
  /// Position of the camera that was opened last, also after it was closed.
  AVCaptureDevicePosition lastPosition() const { return lastPosition_; }

 private:
  std::function<void()> onReplaced_ = [] {};
  std::function<void()> onEvent_ = [] {};
  std::vector<ObservedCamera> open_;  // in the order of opening
  unsigned openings_ = 0;
  unsigned refusals_ = 0;
  AVCaptureDevicePosition lastPosition_ = AVCaptureDevicePosition::Unspecified;
};

/// "back", "front" or "unspecified".
const char* sideInWords(AVCaptureDevicePosition position);

}  // namespace nivlo
