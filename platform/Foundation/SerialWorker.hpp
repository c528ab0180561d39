// One thread that runs what it is given, in order.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace nivlo {

class SerialWorker {
 public:
  /// Starts the thread, which bears the name given (see NSThread::setName).
  explicit SerialWorker(std::string name);
  /// Runs what is queued, then joins the thread; on that thread itself it only lets it end.
  ~SerialWorker();
  SerialWorker(const SerialWorker&) = delete;
  SerialWorker& operator=(const SerialWorker&) = delete;

  /// Callable from any thread.
  void post(std::function<void()> work);

 private:
  struct State;
  std::shared_ptr<State> state_;
};

}  // namespace nivlo
