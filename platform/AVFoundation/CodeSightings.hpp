// Remembers which codes are in view, so that each is reported once.
#pragma once

#include <chrono>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

/// The codes that a metadata output has seen lately. One thread at a time.
class CodeSightings {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// Records what was read in a frame, and returns, in the same order, the codes that have come into view
  /// with it: those that were not seen during the last second of watching. A gap between two frames counts as
  /// at most a quarter of a second of watching, for a code cannot have been seen to leave while nobody
  /// watched.
  std::vector<DecodedCode> comingIntoView(std::vector<DecodedCode> seen, Time now);
  /// Forgets that these codes were seen: they come into view anew.
  void forget(const std::vector<DecodedCode>& codes);

 private:
  using Key = std::pair<std::string, std::string>;

  std::chrono::steady_clock::duration watched_{};
  Time lastLook_{};
  std::map<Key, std::chrono::steady_clock::duration> lastSeen_;
};

}  // namespace nivlo
