// The messages of sway's inter-process communication, as sway-ipc(7) describes them.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace nivlo {

/// The types of messages that are used here.
enum class SwayMessage : std::uint32_t {
  Subscribe = 2,
  GetTree = 4,
  WindowEvent = 0x80000003,
};

/// Returns the bytes of a message.
std::string swayMessage(SwayMessage type, std::string_view payload);

/// Puts messages together from the pieces in which a stream delivers them. A value.
class SwayMessages {
 public:
  /// The longest payload that is accepted, in bytes. A tree of a hundred windows has a hundredth of it.
  static constexpr std::size_t kLongestPayload = std::size_t{16} << 20;

  /// Takes the next piece and calls `handle` with each message that is now complete. Returns false if the
  /// stream does not consist of such messages, or if one is too long; nothing can be read from it then.
  bool take(std::string_view piece,
            const std::function<void(SwayMessage type, std::string_view payload)>& handle);

 private:
  std::string pending_;
};

}  // namespace nivlo
