// A handle for an event of the main loop.
#pragma once

#include <chrono>
#include <functional>

#include <glib.h>

namespace nivlo {

/// Calls a handler for as long as the handle lives; a default-constructed handle stands for no event. The
/// handler may destroy or replace its own handle. Main thread only.
class EventSource {
 public:
  EventSource() = default;
  ~EventSource();
  EventSource(EventSource&& other) noexcept;
  EventSource& operator=(EventSource&& other) noexcept;

  /// Calls the handler each time that the process receives the signal.
  static EventSource onSignal(int signal, std::function<void()> handler);
  /// Calls the handler whenever the descriptor is readable or its other end has been closed. The descriptor
  /// must stay open for as long as the handle lives.
  static EventSource onReadable(int descriptor, std::function<void()> handler);
  /// Calls the handler once, after the delay.
  static EventSource onTimeout(std::chrono::milliseconds delay, std::function<void()> handler);

 private:
  explicit EventSource(GSource* source, std::function<void()> handler, GSourceFunc call);
  GSource* source_ = nullptr;
};

}  // namespace nivlo
