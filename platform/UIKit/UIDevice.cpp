#include "platform/UIKit/UIDevice.hpp"

#include "platform/drivers/Drivers.hpp"

namespace nivlo {

std::shared_ptr<UIDevice> UIDevice::currentDevice() {
  static const auto device = std::make_shared<UIDevice>();
  return device;
}

std::string UIDevice::machine() const {
  const auto& identity = drivers().device;
  return identity ? identity->machine() : std::string();
}

std::string UIDevice::model() const {
  const auto& identity = drivers().device;
  return identity ? identity->model() : std::string();
}

std::string UIDevice::systemVersion() const {
  const auto& identity = drivers().device;
  return identity ? identity->systemVersion() : std::string();
}

}  // namespace nivlo
