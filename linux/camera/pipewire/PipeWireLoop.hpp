// The thread that talks to PipeWire.
#pragma once

#include <chrono>
#include <functional>

#include <pipewire/pipewire.h>

#include "linux/handles/Owned.hpp"

namespace nivlo {

/// Runs a loop of libpipewire on a thread of its own, from construction to destruction. Everything that is
/// made from the loop is created, used and destroyed on that thread, inside run().
class PipeWireLoop {
 public:
  PipeWireLoop();
  /// Must not be called on the loop's own thread.
  ~PipeWireLoop();
  PipeWireLoop(const PipeWireLoop&) = delete;
  PipeWireLoop& operator=(const PipeWireLoop&) = delete;

  /// False when the system refused another thread, or the descriptors that it needs. Nothing else may be
  /// called then.
  bool isRunning() const { return running_; }

  pw_loop* get() const { return pw_thread_loop_get_loop(loop_.get()); }

  /// Runs `work` on the loop's thread and waits until it is done. Must not be called on that thread.
  void run(const std::function<void()>& work);

  /// Waits until `isDone` holds or the time is up. `isDone` is asked under the loop's lock, at first and
  /// after each wake(). Must not be called on the loop's thread.
  void waitForWake(const std::function<bool()>& isDone, std::chrono::milliseconds timeout);

  /// Has waitForWake() ask again. To be called on the loop's thread.
  void wake() { pw_thread_loop_signal(loop_.get(), false); }

 private:
  Owned<pw_thread_loop, pw_thread_loop_destroy> loop_;
  bool running_ = false;
};

/// A one-shot timer. It is created, used and destroyed on the loop's thread, where its callback runs too.
class LoopTimer {
 public:
  LoopTimer(PipeWireLoop& loop, std::function<void()> callback);
  ~LoopTimer();
  LoopTimer(const LoopTimer&) = delete;
  LoopTimer& operator=(const LoopTimer&) = delete;

  /// Starts the timer anew: the callback runs once, this long from now. A time of zero or less means at the
  /// loop's next turn. Where the system has no descriptor left for the timer, that is logged, nothing
  /// happens, and the next call tries again.
  void set(std::chrono::nanoseconds fromNow);

 private:
  bool open();

  pw_loop* loop_;
  std::function<void()> callback_;
  spa_source* source_ = nullptr;  ///< null where the system refused it
};

}  // namespace nivlo
