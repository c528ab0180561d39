// Remembers which codes are in view, so that each is reported once.
#pragma once

#include <chrono>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

class CodeSightings {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// Takes note of what a look at this time found. Returns the codes, in the order given, that come into view
  /// with it: not seen within the last second of watching. A pause between looks counts as watching for a
  /// quarter of a second only: what was not watched cannot have left.
  std::vector<DecodedCode> comingIntoView(std::vector<DecodedCode> seen, Time now);
  /// As if these had never been seen.
  void forget(const std::vector<DecodedCode>& codes);

 private:
  using Key = std::pair<std::string, std::string>;

  std::chrono::steady_clock::duration watched_{};
  Time lastLook_{};
  std::map<Key, std::chrono::steady_clock::duration> lastSeen_;
};

}  // namespace nivlo
