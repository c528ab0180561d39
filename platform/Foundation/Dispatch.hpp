// Queues of work: serial ones, each on a thread of its own, and the main one.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace nivlo {

class DispatchQueue {
 public:
  virtual ~DispatchQueue() = default;
  virtual void async(std::function<void()> work) = 0;
  virtual std::string label() const = 0;
};

using dispatch_queue_t = std::shared_ptr<DispatchQueue>;

/// A serial queue: one thread, named after the queue's label, that runs its work in order. When the last
/// reference goes, what is queued is still run and the thread is joined (or, where the last reference goes on
/// the queue's own thread, left to end by itself).
dispatch_queue_t dispatch_queue_create(std::string_view label);

/// The queue of the main thread's event loop. Work given to it while no main queue is installed is dropped.
dispatch_queue_t dispatch_get_main_queue();

/// Puts the work at the queue's end and returns at once. Callable from any thread. Nothing happens on a null
/// queue.
void dispatch_async(const dispatch_queue_t& queue, std::function<void()> work);

/// Whether the caller is on the main thread; true while no main queue is installed.
bool isMainThread();

/// Lets the last reference to a main-thread object go on the main thread, wherever it is dropped: a
/// background thread that had promoted a weak reference may be the one to drop it.
template <typename Object>
std::shared_ptr<Object> ownedByMainThread(std::unique_ptr<Object> object) {
  return std::shared_ptr<Object>(object.release(), [](Object* last) {
    if (isMainThread()) {
      delete last;
    } else {
      dispatch_async(dispatch_get_main_queue(), [last] { delete last; });
    }
  });
}

}  // namespace nivlo
