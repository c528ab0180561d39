#include "host/surfaces/FrameClock.hpp"

#include <algorithm>
#include <atomic>
#include <utility>

#include "host/loop/EventSource.hpp"
#include "host/render/FramePace.hpp"
#include "platform/Foundation/Dispatch.hpp"

namespace nivlo {

namespace {

bool hasPicture(const CALayer& layer) {
  const auto& sublayers = layer.sublayers();
  return layer.contents() || std::any_of(sublayers.begin(), sublayers.end(),
                                         [](const auto& sublayer) { return hasPicture(*sublayer); });
}

}  // namespace

struct FrameClock::State : std::enable_shared_from_this<State> {
  using Clock = Spacing::Clock;

  std::function<void()> onPicture;  ///< for the main thread only; null once the clock is gone
  std::shared_ptr<const FramePace> pace;
  Spacing spacing;
  EventSource delayed;  ///< the call for the pictures that came too early
  bool isDelayed = false;
  std::atomic<bool> callQueued{false};

  void pictureCame() {
    if (callQueued.exchange(true)) {
      return;
    }
    dispatch_async(dispatch_get_main_queue(), [self = shared_from_this()] {
      self->callQueued = false;
      self->callWhenDue();
    });
  }

  void callWhenDue() {
    if (!onPicture || isDelayed) {
      return;
    }
    const auto interval = pace ? pace->drawingInterval() : Clock::duration::zero();
    const auto wait = spacing.wait(Clock::now(), interval);
    if (wait == Clock::duration::zero()) {
      call(interval);
      return;
    }
    isDelayed = true;
    delayed = EventSource::onTimeout(std::chrono::ceil<std::chrono::milliseconds>(wait), [this, interval] {
      isDelayed = false;
      call(interval);
    });
  }

  void call(Clock::duration interval) {
    spacing.happened(Clock::now(), interval);
    onPicture();
  }
};

FrameClock::FrameClock(const LaidOutView& view, std::function<void()> onPicture)
    : state_(std::make_shared<State>()) {
  state_->onPicture = std::move(onPicture);
  state_->pace = view.pace;
  view.view->layer()->setPictureHandler([state = state_] { state->pictureCame(); });
  if (hasPicture(*view.view->layer())) {
    state_->pictureCame();
  }
}

FrameClock::~FrameClock() {
  state_->delayed = EventSource();
  state_->onPicture = nullptr;
}

}  // namespace nivlo
