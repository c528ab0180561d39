#include "host/show/Presence.hpp"

#include <utility>

namespace nivlo {

namespace {

constexpr std::chrono::milliseconds kHidingDelay{300};

}  // namespace

void Presence::begin() {
  begun_ = true;
  update();
}

void Presence::setVisible(bool visible) {
  hiding_ = EventSource();
  if (visible) {
    visible_ = true;
    update();
  } else if (visible_) {
    hiding_ = EventSource::onTimeout(kHidingDelay, [this] {
      visible_ = false;
      update();
    });
  }
}

void Presence::setAwaited(std::string what) {
  awaited_ = std::move(what);
  update();
}

void Presence::setPaused(bool paused) {
  paused_ = paused;
  update();
}

void Presence::setBatterySaving(BatterySaving saving) {
  saving_ = saving;
  update();
}

void Presence::setInForeground(bool inForeground) {
  if (inForeground == inForeground_) {
    return;
  }
  inForeground_ = inForeground;
  foregroundOwed_ = inForeground;
  if (!inForeground) {
    effects_.enterBackground();
  }
  update();
}

void Presence::update() {
  const bool spared = saving_ == BatterySaving::Paused;
  const bool animating = begun_ && isVisible() && !paused_ && !spared && inForeground_;
  if (animating && std::exchange(foregroundOwed_, false)) {
    effects_.enterForeground();
  }
  if (animating != std::exchange(animating_, animating)) {
    effects_.animate(animating);
  }
  effects_.changed();
}

}  // namespace nivlo
