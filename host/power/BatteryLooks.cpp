#include "host/power/BatteryLooks.hpp"

#include <chrono>
#include <utility>

namespace nivlo {

namespace {

class BatteryLooks : public LookRule {
 public:
  explicit BatteryLooks(std::shared_ptr<const FramePace> pace) : pace_(std::move(pace)) {}

  std::chrono::milliseconds lookInterval(std::chrono::milliseconds usual) const override {
    return usual * (pace_->isHalved() ? 2 : 1);
  }

 private:
  std::shared_ptr<const FramePace> pace_;
};

}  // namespace

std::shared_ptr<const LookRule> sparingTheBattery(std::shared_ptr<const FramePace> pace) {
  return std::make_shared<BatteryLooks>(std::move(pace));
}

}  // namespace nivlo
