#include "platform/Foundation/NSNotificationCenter.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

namespace nivlo {

NSNotificationCenter& NSNotificationCenter::defaultCenter() {
  static NSNotificationCenter center;
  return center;
}

void NSNotificationCenter::addObserver(std::weak_ptr<const void> observer, Handler handler,
                                       std::string_view name, const void* object) {
  auto added = std::make_shared<const Observation>(
      Observation{std::move(observer), std::move(handler), std::string(name), object});
  const std::lock_guard lock(mutex_);
  observations_.push_back(std::move(added));
}

void NSNotificationCenter::removeObserver(const void* observer) { takeOut(observer); }

/// Takes out the observations of this observer and of those that are gone. The caller destroys them, without
/// the lock, because what they hold may use this centre as it is destroyed.
NSNotificationCenter::Observations NSNotificationCenter::takeOut(const void* observer) {
  Observations out;
  std::vector<std::shared_ptr<const void>> promoted;
  const std::lock_guard lock(mutex_);
  const auto kept = std::stable_partition(observations_.begin(), observations_.end(), [&](const auto& entry) {
    promoted.push_back(entry->observer.lock());
    return promoted.back() && promoted.back().get() != observer;
  });
  out.assign(std::make_move_iterator(kept), std::make_move_iterator(observations_.end()));
  observations_.erase(kept, observations_.end());
  return out;
}

void NSNotificationCenter::postNotificationName(std::string_view name, const void* object) {
  takeOut(nullptr);
  std::vector<std::weak_ptr<const Observation>> due;
  {
    const std::lock_guard lock(mutex_);
    for (const auto& entry : observations_) {
      if (entry->name == name && (!entry->object || entry->object == object)) {
        due.push_back(entry);
      }
    }
  }
  const NSNotification notification{std::string(name), object};
  for (const auto& entry : due) {
    const auto observation = entry.lock();
    const auto observer = observation ? observation->observer.lock() : nullptr;
    if (observer) {
      observation->handler(notification);
    }
  }
}

}  // namespace nivlo
