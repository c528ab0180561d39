// Decides when the wallpaper is animated.
#pragma once

#include <functional>
#include <string>

#include "host/loop/EventSource.hpp"

namespace nivlo {

/// The measure that spares the battery at present.
enum class BatterySaving {
  None,
  Slowed,  ///< fewer pictures and fewer looks for codes
  Paused,  ///< the wallpaper is not animated
};

/// Animates the wallpaper, and so keeps a camera open, only while part of it can be seen, the user has not
/// paused it, the battery is not spared by a pause, no output is waited for, and the session is in the
/// foreground. Main thread only.
class Presence {
 public:
  struct Effects {
    std::function<void(bool animating)> animate;  ///< called at each change
    std::function<void()> enterBackground;        ///< called before the animation stops
    std::function<void()> enterForeground;        ///< called before the animation resumes
    std::function<void()> changed = [] {};        ///< called after each change of any answer
  };

  /// Starts out visible, not paused and in the foreground, but animates nothing before begin().
  explicit Presence(Effects effects) : effects_(std::move(effects)) {}

  void begin();
  /// Becoming visible counts at once; being hidden counts after 0.3 seconds, so that the camera's light does
  /// not blink while windows change places.
  void setVisible(bool visible);
  /// Takes what must be there before anything can be seen (see Surface::awaited); empty if nothing is
  /// missing. Counts at once.
  void setAwaited(std::string what);
  void setPaused(bool paused);
  void setBatterySaving(BatterySaving saving);
  /// Returning to the foreground is announced only when the wallpaper is animated again, because a wallpaper
  /// opens its camera at the announcement, whether or not anybody can see it.
  void setInForeground(bool inForeground);

  bool isAnimating() const { return animating_; }
  bool isVisible() const { return visible_ && awaited_.empty(); }
  const std::string& awaited() const { return awaited_; }
  bool isPaused() const { return paused_; }
  BatterySaving batterySaving() const { return saving_; }
  bool isInForeground() const { return inForeground_; }

 private:
  void update();

  Effects effects_;
  EventSource hiding_;
  bool begun_ = false;
  bool visible_ = true;
  std::string awaited_;
  bool paused_ = false;
  BatterySaving saving_ = BatterySaving::None;
  bool inForeground_ = true;
  bool foregroundOwed_ = false;
  bool animating_ = false;
};

}  // namespace nivlo
