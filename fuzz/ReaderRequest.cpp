// Fuzzes what nivlo-reader is sent, a request and a picture, through all of its decoders.
#include "fuzz/Check.hpp"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "linux/codes/child/Service.hpp"

namespace nivlo::fuzz {
namespace {

constexpr int kMaxEdgeLength = 128;
constexpr int kMaxLooks = 10;

/// Returns a picture of the requested size, filled by repeating the bytes; black if there are none.
std::vector<std::uint8_t> pictureOf(std::string_view bytes, const LookRequest& request) {
  std::vector<std::uint8_t> pixels(static_cast<std::size_t>(request.width) * request.height);
  for (std::size_t i = 0; i < pixels.size() && !bytes.empty(); ++i) {
    pixels[i] = static_cast<std::uint8_t>(bytes[i % bytes.size()]);
  }
  return pixels;
}

void look(LookRequest request, std::string_view bytes) {
  request.width = (request.width - 1) % kMaxEdgeLength + 1;
  request.height = (request.height - 1) % kMaxEdgeLength + 1;
  const auto pixels = pictureOf(bytes, request);
  const std::string message(reinterpret_cast<const char*>(&request), sizeof request);
  PictureReader reader;
  // Each look continues through the schedule, so the number decides with which strategy the last one ends.
  for (auto left = request.number % kMaxLooks + 1; left > 0; --left) {
    const auto reply = answer(reader, message, pixels.data());
    check(reply && parseReply(request, *reply), "every request gets a valid reply");
  }
}

}  // namespace
}  // namespace nivlo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto header = bytes.substr(0, sizeof(nivlo::LookRequest));
  if (const auto request = nivlo::parseRequest(header)) {
    nivlo::fuzz::look(*request, bytes.substr(header.size()));
  }
  return 0;
}
