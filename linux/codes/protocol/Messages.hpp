// The messages between the program and its code reader, a child process: one each way for each look.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

/// The most pixels that a picture may have. The shared memory has one byte for each.
inline constexpr int kMaxPicturePixels = 8192 * 8192;
/// The length of the longest reply, in bytes.
inline constexpr std::size_t kMaxReplySize = std::size_t{128} * 1024;

/// The descriptors that the child inherits besides the standard ones: a SOCK_SEQPACKET socket, which keeps
/// messages apart, and the shared memory.
inline constexpr int kReaderSocket = 3;
inline constexpr int kReaderPicture = 4;

/// The child's exit status when it fails before it could enter its sandbox, for example without memory.
inline constexpr int kReaderNotReady = 70;
/// The child's exit statuses when it cannot set up its sandbox, one for each step that the system can refuse.
enum class SandboxStep { Privileges = 71, Limits, Filter };

/// Asks for a look at the luma in the shared memory, whose rows are stored without padding. It is sent as the
/// bytes of this struct, because both ends are built together and run on the same machine.
struct LookRequest {
  std::uint64_t number = 0;      ///< repeated by the reply
  std::int64_t captureTime = 0;  ///< ticks of std::chrono::steady_clock since its epoch
  std::int32_t width = 0;        ///< pixels
  std::int32_t height = 0;       ///< pixels

  /// Returns whether the size is positive and the picture fits the shared memory.
  bool isValid() const;
};

/// Returns the request, or nothing if the bytes are not exactly one valid request.
std::optional<LookRequest> parseRequest(std::string_view bytes);

/// Returns the reply to a request. Corners outside the picture are moved to its edge. Codes of an unknown
/// type, without four finite corners, or for which the reply has no room are left out.
std::string makeReply(const LookRequest& request, const std::vector<DecodedCode>& codes);

/// Returns the codes of a reply, which is validated in full because a hostile picture may have taken over the
/// child. Returns nothing if makeReply could not have produced these bytes for this request. A code whose
/// text is not valid UTF-8 is left out; the others count.
std::optional<std::vector<DecodedCode>> parseReply(const LookRequest& request, std::string_view bytes);

}  // namespace nivlo
