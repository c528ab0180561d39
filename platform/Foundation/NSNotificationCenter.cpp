#include "platform/Foundation/NSNotificationCenter.hpp"

#include <utility>

namespace nivlo {

NSNotificationCenter& NSNotificationCenter::defaultCenter() {
  static NSNotificationCenter center;
  return center;
}

void NSNotificationCenter::addObserver(std::weak_ptr<const void> observer, Handler handler,
                                       std::string_view name, const void* object) {
  const std::lock_guard lock(mutex_);
  observations_.push_back({std::move(observer), std::move(handler), std::string(name), object});
}

void NSNotificationCenter::removeObserver(const void* observer) {
  const std::lock_guard lock(mutex_);
  std::erase_if(observations_, [&](const Observation& entry) {
    const auto alive = entry.observer.lock();
    return !alive || alive.get() == observer;
  });
}

void NSNotificationCenter::postNotificationName(std::string_view name, const void* object) {
  struct Call {
    std::shared_ptr<const void> observer;
    Handler handler;
  };
  std::vector<Call> calls;
  {
    const std::lock_guard lock(mutex_);
    std::erase_if(observations_, [](const Observation& entry) { return entry.observer.expired(); });
    for (const auto& entry : observations_) {
      if (entry.name == name && (!entry.object || entry.object == object)) {
        calls.push_back({entry.observer.lock(), entry.handler});
      }
    }
  }
  const NSNotification notification{std::string(name), object};
  for (const auto& call : calls) {
    if (call.observer) {
      call.handler(notification);
    }
  }
}

}  // namespace nivlo
