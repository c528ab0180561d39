// Rules on when and how often codes are looked for.
#pragma once

#include <chrono>
#include <memory>

#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

/// A rule that readers keep to. Its functions are called on the thread that looks.
class LookRule {
 public:
  virtual ~LookRule() = default;

  /// Returns whether codes may be looked for now.
  virtual bool mayLook() const { return true; }
  /// Returns the shortest time between two looks where `usual` is that of the reader.
  virtual std::chrono::milliseconds lookInterval(std::chrono::milliseconds usual) const { return usual; }
};

/// Returns the same readers, which keep to the rule besides their own.
std::unique_ptr<CodeReaderDriver> ruledBy(std::shared_ptr<const LookRule> rule,
                                          std::unique_ptr<CodeReaderDriver> readers);

}  // namespace nivlo
