#include "linux/codes/child/Service.hpp"

#include <array>
#include <exception>
#include <new>

#include <sys/socket.h>

namespace nivlo {

namespace {

/// ZXing throws over some pictures, mostly where it takes something else for a code and follows it out of the
/// picture. That costs one look; running out of memory ends the process, so that a new one starts afresh.
std::vector<DecodedCode> codesIn(PictureReader& reader, const LumaPicture& picture,
                                 std::chrono::steady_clock::time_point captureTime) {
  try {
    return reader.read(picture, captureTime);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception&) {
    return {};
  }
}

}  // namespace

std::optional<std::string> answer(PictureReader& reader, std::string_view request,
                                  const std::uint8_t* pixels) {
  const auto look = parseRequest(request);
  if (!look) {
    return std::nullopt;
  }
  const LumaPicture picture{pixels, look->width, look->height, look->width};
  using std::chrono::steady_clock;
  const steady_clock::time_point captureTime{steady_clock::duration(look->captureTime)};
  return makeReply(*look, codesIn(reader, picture, captureTime));
}

bool serve(int socket, const std::uint8_t* pixels) {
  PictureReader reader;
  std::array<char, sizeof(LookRequest)> bytes{};
  for (;;) {
    const auto size = recv(socket, bytes.data(), bytes.size(), 0);
    if (size <= 0) {
      return size == 0;
    }
    const auto reply = answer(reader, {bytes.data(), static_cast<std::size_t>(size)}, pixels);
    if (!reply) {
      return false;
    }
    if (send(socket, reply->data(), reply->size(), MSG_NOSIGNAL) < 0) {
      return true;
    }
  }
}

}  // namespace nivlo
