// The reader's side of the conversation.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "linux/codes/PictureReader.hpp"
#include "linux/codes/protocol/Messages.hpp"

namespace nivlo {

/// The answer to a request about the picture at `pixels`; nothing when the bytes are no request. A
/// picture that the decoder fails at has no codes. Throws std::bad_alloc.
std::optional<std::string> answer(PictureReader& reader, std::string_view request,
                                  const std::uint8_t* pixels);

/// Answers what comes over the socket until its other end is closed. Returns whether all were requests.
/// Throws std::bad_alloc.
bool serve(int socket, const std::uint8_t* pixels);

}  // namespace nivlo
