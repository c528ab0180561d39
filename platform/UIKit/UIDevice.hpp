// The machine that the program runs on.
#pragma once

#include <memory>
#include <string>

#include "platform/Foundation/NSObject.hpp"

namespace nivlo {

/// Tells what machine this is. All texts are empty while no device identity driver is installed. Callable
/// from any thread.
class UIDevice : public NSObject {
 public:
  /// The one device of the process; never null.
  static std::shared_ptr<UIDevice> currentDevice();

  /// The machine identifier, for example "iPhone4,1" or "x86_64".
  std::string machine() const;
  /// The product's name for people, for example "LENOVO 20XW".
  std::string model() const;
  /// The operating system's version for people, for example "12".
  std::string systemVersion() const;
};

}  // namespace nivlo
