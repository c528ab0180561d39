// A thread that runs work in order.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace nivlo {

/// Runs the work that it is given on a thread of its own, one piece after the other.
class SerialWorker {
 public:
  /// Starts the thread and names it (see NSThread::setName).
  explicit SerialWorker(std::string name);
  /// Waits until the work in the queue has run and the thread has ended. On that thread itself it returns at
  /// once, and the thread ends after the work.
  ~SerialWorker();
  SerialWorker(const SerialWorker&) = delete;
  SerialWorker& operator=(const SerialWorker&) = delete;

  /// Adds work to the end of the queue. The work must not throw. Callable from any thread.
  void post(std::function<void()> work);

 private:
  struct State;
  std::shared_ptr<State> state_;
};

}  // namespace nivlo
