// What the program and its reader, a child process, say to each other: a message each way a look.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/drivers/CodeReaderDriver.hpp"

namespace nivlo {

/// Pixels that a picture may have; the memory that both sides share has a byte for each.
inline constexpr int kLargestPicture = 8192 * 8192;
/// No answer is longer, in bytes.
inline constexpr std::size_t kLongestReply = std::size_t{128} * 1024;

/// The descriptors that the child begins with, besides the standard ones.
inline constexpr int kReaderSocket = 3;
inline constexpr int kReaderPicture = 4;

/// The status with which the child ends where it cannot be locked in.
inline constexpr int kReaderUncaged = 70;

/// Asks for a look at the luma in the shared memory, whose rows follow one another without padding.
struct LookRequest {
  std::uint64_t number = 0;      ///< the answer repeats it
  std::int64_t captureTime = 0;  ///< of the steady clock, in its own ticks
  std::int32_t width = 0;        ///< pixels
  std::int32_t height = 0;       ///< pixels

  /// Whether it is about a picture, and one that fits the shared memory.
  bool isSane() const;
};

/// Nothing when the bytes are no sane request.
std::optional<LookRequest> parseRequest(std::string_view bytes);

/// The answer to a request. Corners are moved into the picture; codes that have none anywhere and
/// those beyond the answer's room are left out.
std::string makeReply(const LookRequest& request, const std::vector<DecodedCode>& codes);

/// The codes of an answer, of which nothing is believed. Nothing when it is not what makeReply could have
/// made of this request. A code whose text is no valid UTF-8 is left out.
std::optional<std::vector<DecodedCode>> parseReply(const LookRequest& request, std::string_view bytes);

}  // namespace nivlo
