// The driver that knows what machine this is.
#pragma once

#include <string>

namespace nivlo {

/// Tells what machine this is. Callable from any thread.
class DeviceIdentity {
 public:
  virtual ~DeviceIdentity() = default;

  /// The machine identifier, for example "iPhone4,1" or "x86_64".
  virtual std::string machine() const = 0;
  /// The product's name for people; never empty.
  virtual std::string model() const = 0;
  /// The operating system's version for people; never empty.
  virtual std::string systemVersion() const = 0;
};

}  // namespace nivlo
