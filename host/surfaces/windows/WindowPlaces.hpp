// The windows that cover an output, where the compositor tells their places.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "host/loop/EventSource.hpp"
#include "host/surfaces/windows/WindowSource.hpp"
#include "linux/timing/Backoff.hpp"

namespace nivlo {

/// Follows the places of all windows, asking at most four times a second. No compositor reports windows that
/// are moved with the pointer or resized, so while any window can be seen it also asks every two seconds. A
/// connection that ends, or on which no answer comes for five seconds, is made anew after growing delays.
/// Main thread only.
class WindowPlaces {
 public:
  /// `changed` is called through the main loop when any answer may have changed. A null `open` stands for a
  /// compositor that tells nothing.
  WindowPlaces(OpenWindowSource open, std::function<void()> changed);
  WindowPlaces(const WindowPlaces&) = delete;
  WindowPlaces& operator=(const WindowPlaces&) = delete;

  /// Unknown while the compositor does not tell.
  Cover coverOf(const std::string& output) const;

 private:
  using Clock = std::chrono::steady_clock;

  void connect();
  void askSoon();
  void ask();
  void answered(DesktopWindows windows);
  void ended(const std::string& cause);

  OpenWindowSource open_;
  std::function<void()> changed_;
  std::optional<DesktopWindows> windows_;
  std::unique_ptr<WindowSource> source_;
  Clock::time_point asked_;
  bool isWaiting_ = false;  ///< for the answer
  bool isStale_ = false;    ///< the answer that is waited for may be out of date when it comes
  EventSource next_;        ///< the next question, the end of patience, or the next attempt to connect
  bool isSoon_ = false;     ///< `next_` is a question because something has changed
  bool reported_ = false;
  Backoff retryDelay_{std::chrono::seconds(1), std::chrono::minutes(1)};
};

}  // namespace nivlo
