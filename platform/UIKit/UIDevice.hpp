// The machine that the program runs on.
#pragma once

#include <memory>
#include <string>

#include "platform/Foundation/NSObject.hpp"

namespace nivlo {

/// Callable from any thread. All texts are empty while no driver says what the machine is.
class UIDevice : public NSObject {
 public:
  /// The same object for the whole process; never null.
  static std::shared_ptr<UIDevice> currentDevice();

  /// The machine identifier, for example "iPhone4,1" or "x86_64".
  std::string machine() const;
  /// The product's name for people.
  std::string model() const;
  /// The operating system's version for people.
  std::string systemVersion() const;
};

}  // namespace nivlo
