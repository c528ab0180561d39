// A device identity whose machine identifier the test chooses.
#pragma once

#include <string>
#include <utility>

#include "platform/drivers/DeviceIdentity.hpp"

namespace nivlo {

class FakeIdentity : public DeviceIdentity {
 public:
  explicit FakeIdentity(std::string machine) : machine_(std::move(machine)) {}
  std::string machine() const override { return machine_; }
  std::string model() const override { return "model"; }
  std::string systemVersion() const override { return "1"; }

 private:
  std::string machine_;
};

}  // namespace nivlo
