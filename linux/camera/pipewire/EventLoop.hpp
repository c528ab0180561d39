// The thread on which everything with PipeWire happens.
#pragma once

#include <chrono>
#include <functional>

#include "linux/camera/pipewire/Handles.hpp"

namespace nivlo::pipewire {

/// Runs from construction to destruction. Objects of libpipewire are used on its thread, or under its lock.
class EventLoop {
 public:
  EventLoop();
  /// Must not run on the loop's own thread.
  ~EventLoop();
  EventLoop(const EventLoop&) = delete;
  EventLoop& operator=(const EventLoop&) = delete;

  /// False when the system could not give a thread; nothing else may be called then.
  bool isRunning() const { return running_; }

  pw_loop* get() const { return pw_thread_loop_get_loop(loop_.get()); }

  /// Runs `work` on the loop's thread and waits for it. Must not be called on that thread.
  void run(const std::function<void()>& work);

  /// Waits, on another thread than the loop's, until `wake` is called or the time is up.
  void waitForWake(const std::function<bool()>& isDone, std::chrono::milliseconds timeout);

  /// Ends a wait. On the loop's thread.
  void wake() { pw_thread_loop_signal(loop_.get(), false); }

 private:
  ThreadLoopPtr loop_;
  bool running_ = false;
};

/// Calls back on the loop's thread, once for each time that it is set. To be created, used and destroyed on
/// that thread.
class LoopTimer {
 public:
  LoopTimer(EventLoop& loop, std::function<void()> callback);
  ~LoopTimer();
  LoopTimer(const LoopTimer&) = delete;
  LoopTimer& operator=(const LoopTimer&) = delete;

  /// Replaces an earlier time that has not come yet.
  void set(std::chrono::nanoseconds fromNow);

 private:
  pw_loop* loop_;
  std::function<void()> callback_;
  spa_source* source_;
};

}  // namespace nivlo::pipewire
