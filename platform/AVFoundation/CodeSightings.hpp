// Remembers which codes are in view, so that each is reported once.
#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

/// The codes that a metadata output has seen lately. One thread at a time.
///
/// A code is in view until it has not been seen for a second of watching. A gap between two frames counts as
/// at most a quarter of a second of watching, for a code cannot have been seen to leave while nobody watched.
/// Each camera's watching counts for itself: a code that was before one camera when another was chosen is
/// still in view when the first one is chosen again and sees it at once.
class CodeSightings {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// Records what was read in a frame of the camera and returns the last of the codes that have come into
  /// view, or nothing if all of them were in view before. The other codes that have come into view are not
  /// recorded, so they are returned with later frames, one with each.
  std::optional<DecodedCode> nextNew(const std::string& camera, std::vector<DecodedCode> seen, Time now);
  /// Forgets that this code was seen: it comes into view anew.
  void forget(const DecodedCode& code);

 private:
  using Key = std::pair<std::string, std::string>;
  using Duration = std::chrono::steady_clock::duration;

  class Watch {
   public:
    void advance(Time now);
    bool remembers(const Key& code) const { return lastSeen_.contains(code); }
    void see(const Key& code) { lastSeen_[code] = watched_; }
    void forget(const Key& code) { lastSeen_.erase(code); }

   private:
    Duration watched_{};
    Time lastLook_{};
    std::map<Key, Duration> lastSeen_;
  };

  static Key keyOf(const DecodedCode& code) { return {code.type, code.text}; }

  std::map<std::string, Watch> byCamera_;
  // A code that is moved from one camera to the other in less than a second has not left the view either.
  Watch byAny_;
};

}  // namespace nivlo
