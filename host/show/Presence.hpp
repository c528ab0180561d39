// When the wallpaper is to be animated.
#pragma once

#include <functional>

#include "host/loop/EventSource.hpp"

namespace nivlo {

/// The wallpaper is animated, and a camera open, only while some of it can be seen, the person has not paused
/// it, and the session is in the foreground. Main thread only.
class Presence {
 public:
  struct Effects {
    std::function<void(bool animating)> animate;  ///< at each change
    std::function<void()> enterBackground;        ///< before the animation stops for it
    std::function<void()> enterForeground;        ///< before the animation goes on after it
  };

  /// Visible, not paused and in the foreground, but not animated before `begin`.
  explicit Presence(Effects effects) : effects_(std::move(effects)) {}

  void begin();
  /// What becomes visible counts at once, what is hidden only when it stays so for a moment: windows that
  /// change places must not make the camera's light blink.
  void setVisible(bool visible);
  void setPaused(bool paused);
  /// A session that comes to the foreground while the wallpaper cannot be seen is announced when it can: a
  /// wallpaper starts its camera at the announcement.
  void setInForeground(bool inForeground);

  bool isAnimating() const { return animating_; }
  bool isVisible() const { return visible_; }
  bool isPaused() const { return paused_; }
  bool isInForeground() const { return inForeground_; }

 private:
  void update();

  Effects effects_;
  EventSource hiding_;
  bool begun_ = false;
  bool visible_ = true;
  bool paused_ = false;
  bool inForeground_ = true;
  bool foregroundOwed_ = false;
  bool animating_ = false;
};

}  // namespace nivlo
