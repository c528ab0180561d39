// The key that closes a window without a title bar.
#pragma once

#include <functional>
#include <utility>

#include "host/surfaces/wayland/WaylandHandles.hpp"

namespace nivlo {

/// Reports presses of the Escape key while a window of this connection has the keyboard. Its code is the same
/// in every keyboard layout. Main thread only.
class EscapeKey {
 public:
  /// The seat must be bound in this version, and have told nothing yet.
  static constexpr int kSeatVersion = 1;

  explicit EscapeKey(WaylandHandle<wl_seat> seat);
  EscapeKey(const EscapeKey&) = delete;
  EscapeKey& operator=(const EscapeKey&) = delete;

  void onPressed(std::function<void()> pressed) { pressed_ = std::move(pressed); }

 private:
  static const wl_seat_listener kSeatListener;
  static const wl_keyboard_listener kKeyboardListener;

  void seatChanged(bool hasKeyboard);

  WaylandHandle<wl_seat> seat_;
  WaylandHandle<wl_keyboard> keyboard_;
  std::function<void()> pressed_;
};

}  // namespace nivlo
