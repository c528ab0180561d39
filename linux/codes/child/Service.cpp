#include "linux/codes/child/Service.hpp"

#include <array>

#include <sys/socket.h>

namespace nivlo {

std::optional<std::string> answer(FrameReader& reader, std::string_view request, const std::uint8_t* pixels) {
  const auto look = parseRequest(request);
  if (!look) return std::nullopt;
  const LumaPicture picture{pixels, look->width, look->height, look->width};
  using std::chrono::steady_clock;
  const steady_clock::time_point captureTime{steady_clock::duration(look->captureTime)};
  return makeReply(*look, reader.read(picture, captureTime));
}

bool serve(int socket, const std::uint8_t* pixels) {
  FrameReader reader;
  std::array<char, sizeof(LookRequest)> bytes{};
  for (;;) {
    const auto size = recv(socket, bytes.data(), bytes.size(), 0);
    if (size <= 0) return size == 0;
    const auto reply = answer(reader, {bytes.data(), static_cast<std::size_t>(size)}, pixels);
    if (!reply) return false;
    if (send(socket, reply->data(), reply->size(), MSG_NOSIGNAL) < 0) return true;
  }
}

}  // namespace nivlo
