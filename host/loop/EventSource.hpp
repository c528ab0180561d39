// Events of the main loop that stop coming when their handle goes.
#pragma once

#include <chrono>
#include <functional>

#include <glib.h>

namespace nivlo {

/// Main thread only. A default-made one is no event.
class EventSource {
 public:
  EventSource() = default;
  ~EventSource();
  EventSource(EventSource&& other) noexcept;
  EventSource& operator=(EventSource&& other) noexcept;

  /// Calls the handler when the process gets the signal, each time.
  static EventSource onSignal(int signal, std::function<void()> handler);
  /// Calls it whenever the descriptor can be read, or its other end is closed.
  static EventSource onReadable(int descriptor, std::function<void()> handler);
  /// Calls it once, after the delay.
  static EventSource onTimeout(std::chrono::milliseconds delay, std::function<void()> handler);

 private:
  explicit EventSource(GSource* source, std::function<void()> handler, GSourceFunc call);
  GSource* source_ = nullptr;
};

}  // namespace nivlo
