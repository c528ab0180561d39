#include "platform/drivers/Drivers.hpp"

#include <utility>

namespace nivlo {

Drivers& drivers() {
  static Drivers installed;
  return installed;
}

void installDrivers(Drivers replacement) { drivers() = std::move(replacement); }

}  // namespace nivlo
