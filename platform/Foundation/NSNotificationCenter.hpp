// Named events inside the process.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace nivlo {

struct NSNotification {
  std::string name;
  const void* object = nullptr;  ///< the sender; only ever compared
};

class NSNotificationCenter {
 public:
  using Handler = std::function<void(const NSNotification&)>;

  static NSNotificationCenter& defaultCenter();

  /// Calls the handler for each notification of this name from this sender, or from any where `object` is
  /// null. The observer is not kept alive: once it is gone its registrations count for nothing, so there is
  /// no need to remove them. The handler should not hold the observer either.
  void addObserver(std::weak_ptr<const void> observer, Handler handler, std::string_view name,
                   const void* object = nullptr);

  /// Removes all registrations of the observer, also for a notification that is being posted.
  void removeObserver(const void* observer);

  /// Calls the handlers, in the order in which they were added, on the caller's thread, and returns when all
  /// have run. An observer that is added meanwhile is not told of it.
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
