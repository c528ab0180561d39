// Tells the main thread when a view has something new to draw.
#pragma once

#include <functional>
#include <memory>

#include "host/render/ViewLayout.hpp"

namespace nivlo {

/// Calls the handler on the main thread after any layer of the view's tree has got a new picture, and once
/// for the pictures that are there already, but never from the constructor. Pictures that come faster than
/// the main thread gets round to them, or than the view's pace allows, share one call. A view has one clock
/// at a time. Main thread only.
class FrameClock {
 public:
  FrameClock(const LaidOutView& view, std::function<void()> onPicture);
  ~FrameClock();
  FrameClock(const FrameClock&) = delete;
  FrameClock& operator=(const FrameClock&) = delete;

 private:
  struct State;
  std::shared_ptr<State> state_;
};

}  // namespace nivlo
