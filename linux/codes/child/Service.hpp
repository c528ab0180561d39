// nivlo-reader's end of the conversation with the program.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "linux/codes/PictureReader.hpp"
#include "linux/codes/protocol/Messages.hpp"

namespace nivlo {

/// Returns the reply to a request about the picture at `pixels`, which must have as many bytes as the request
/// says, or nothing if the bytes are not a valid request. A picture over which the decoder throws counts as
/// one without codes, unless memory ran out: then this throws std::bad_alloc.
std::optional<std::string> answer(PictureReader& reader, std::string_view request,
                                  const std::uint8_t* pixels);

/// Answers requests from the socket until its other end is closed. `pixels` must have kMaxPicturePixels
/// bytes. Returns false as soon as a message is not a valid request or the socket fails. Throws
/// std::bad_alloc.
bool serve(int socket, const std::uint8_t* pixels);

}  // namespace nivlo
