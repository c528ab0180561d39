#include "platform/Foundation/SerialWorker.hpp"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/Foundation/NSThread.hpp"

namespace nivlo {

struct SerialWorker::State {
  std::mutex mutex;
  std::condition_variable wake;
  std::deque<std::function<void()>> work;
  bool ending = false;
  std::thread thread;

  void run() {
    std::unique_lock lock(mutex);
    while (true) {
      wake.wait(lock, [this] { return ending || !work.empty(); });
      if (work.empty()) {
        return;
      }
      auto next = std::move(work.front());
      work.pop_front();
      lock.unlock();
      next();
      next = nullptr;  // Destroys what the work captured before the lock is taken again.
      lock.lock();
    }
  }
};

SerialWorker::SerialWorker(std::string name) : state_(std::make_shared<State>()) {
  // The thread shares the state, because it outlives a worker that is destroyed on its own thread.
  state_->thread = std::thread([state = state_, name = std::move(name)] {
    NSThread::currentThread().setName(name);
    state->run();
  });
}

SerialWorker::~SerialWorker() {
  {
    const std::lock_guard lock(state_->mutex);
    state_->ending = true;
  }
  state_->wake.notify_one();
  if (state_->thread.get_id() == std::this_thread::get_id()) {
    state_->thread.detach();
  } else {
    state_->thread.join();
  }
}

void SerialWorker::post(std::function<void()> work) {
  {
    const std::lock_guard lock(state_->mutex);
    state_->work.push_back(std::move(work));
  }
  state_->wake.notify_one();
}

}  // namespace nivlo
