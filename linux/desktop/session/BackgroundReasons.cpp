#include "linux/desktop/session/BackgroundReasons.hpp"

namespace nivlo {

void BackgroundReasons::set(std::string_view reason, bool holds) {
  if (holds) {
    reasons_.emplace(reason);
  } else if (const auto found = reasons_.find(reason); found != reasons_.end()) {
    reasons_.erase(found);
  }
  if (moving_) {
    return;
  }
  moving_ = true;
  while (place_ != place()) {
    place_ = place();
    moved_(place_);
  }
  moving_ = false;
}

BackgroundReasons::Place BackgroundReasons::place() const {
  return reasons_.empty() ? Place::Foreground : Place::Background;
}

}  // namespace nivlo
