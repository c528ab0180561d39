#include "host/surfaces/FrameClock.hpp"

#include <algorithm>
#include <atomic>
#include <utility>

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
  std::function<void()> onPicture;  ///< for the main thread only; null once the clock is gone
  std::atomic<bool> callQueued{false};

  void pictureCame() {
    if (callQueued.exchange(true)) {
      return;
    }
    dispatch_async(dispatch_get_main_queue(), [self = shared_from_this()] {
      self->callQueued = false;
      if (self->onPicture) {
        self->onPicture();
      }
    });
  }
};

FrameClock::FrameClock(const UIView& view, std::function<void()> onPicture)
    : state_(std::make_shared<State>()) {
  state_->onPicture = std::move(onPicture);
  view.layer()->setPictureHandler([state = state_] { state->pictureCame(); });
  if (hasPicture(*view.layer())) {
    state_->pictureCame();
  }
}

FrameClock::~FrameClock() { state_->onPicture = nullptr; }

}  // namespace nivlo
