// Tells the main thread when a view has something new to draw.
#pragma once

#include <functional>
#include <memory>

#include "platform/UIKit/UIView.hpp"

namespace nivlo {

/// Calls the handler on the main thread after a preview layer in the view's tree has taken a frame; frames
/// that come faster than they can be drawn share one call. Watches the layers that are there when it is made.
/// Main thread only.
class FrameClock {
 public:
  FrameClock(const UIView& view, std::function<void()> onFrame);
  ~FrameClock();
  FrameClock(const FrameClock&) = delete;
  FrameClock& operator=(const FrameClock&) = delete;

 private:
  struct State;
  std::shared_ptr<State> state_;
};

}  // namespace nivlo
