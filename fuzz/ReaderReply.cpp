// Fuzzes the parser of what nivlo-reader sends back, which may have been taken over by a hostile picture.
#include "fuzz/Check.hpp"

#include <cstdint>
#include <cstring>
#include <string_view>

#include "linux/codes/protocol/Messages.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace nivlo;
  LookRequest request{.width = 640, .height = 480};
  // A reply to another request is rejected unread, so let the request match the input.
  if (size >= sizeof request.number) {
    std::memcpy(&request.number, data, sizeof request.number);
  }
  const auto codes = parseReply(request, {reinterpret_cast<const char*>(data), size});
  if (!codes) {
    return 0;
  }
  for (const DecodedCode& code : *codes) {
    fuzz::check(code.corners.size() == 4, "a code has four corners");
    for (const CGPoint corner : code.corners) {
      fuzz::check(corner.x >= 0 && corner.x <= request.width && corner.y >= 0 && corner.y <= request.height,
                  "corners are inside the picture");
    }
  }
  const auto again = parseReply(request, makeReply(request, *codes));
  fuzz::check(again && again->size() == codes->size(), "an accepted reply survives a round trip");
  return 0;
}
