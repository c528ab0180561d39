// Notifications: named events within the process.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace nivlo {

/// An event. UIApplication.hpp names those that the program posts.
struct NSNotification {
  std::string name;
  const void* object = nullptr;  ///< the sender, or null; compare it, but do not follow it
};

/// Passes notifications from those who post them to those who observe them. Callable from any thread, and
/// from within handlers.
class NSNotificationCenter {
 public:
  using Handler = std::function<void(const NSNotification&)>;

  /// The one centre of the process.
  static NSNotificationCenter& defaultCenter();

  /// Has the handler called for each notification of this name, from this sender or, when `object` is null,
  /// from any. Nothing keeps the observer alive: once it is gone, its handlers are not called any more, so
  /// they need not be removed. A handler that captures its observer must do so weakly.
  void addObserver(std::weak_ptr<const void> observer, Handler handler, std::string_view name,
                   const void* object = nullptr);

  /// Removes all registrations of the observer. That takes effect even for a notification that is being
  /// posted.
  void removeObserver(const void* observer);

  /// Calls the handlers on the caller's thread, in the order in which they were added, and returns after the
  /// last. Those that are added meanwhile are not called.
  void postNotificationName(std::string_view name, const void* object = nullptr);

 private:
  struct Observation {
    std::weak_ptr<const void> observer;
    Handler handler;
    std::string name;
    const void* object;
  };

  using Observations = std::vector<std::shared_ptr<const Observation>>;
  Observations takeOut(const void* observer);

  std::mutex mutex_;
  Observations observations_;
};

}  // namespace nivlo
