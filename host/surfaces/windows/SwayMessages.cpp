#include "host/surfaces/windows/SwayMessages.hpp"

#include <cstring>

namespace nivlo {

namespace {

constexpr std::string_view kMagic = "i3-ipc";
constexpr std::size_t kNumber = sizeof(std::uint32_t);  // in the byte order of the machine
constexpr std::size_t kHeader = kMagic.size() + 2 * kNumber;

std::uint32_t numberAt(std::string_view bytes, std::size_t offset) {
  std::uint32_t number = 0;
  std::memcpy(&number, bytes.data() + offset, kNumber);
  return number;
}

void append(std::string& to, std::uint32_t number) {
  to.append(reinterpret_cast<const char*>(&number), kNumber);
}

}  // namespace

std::string swayMessage(SwayMessage type, std::string_view payload) {
  std::string message(kMagic);
  append(message, static_cast<std::uint32_t>(payload.size()));
  append(message, static_cast<std::uint32_t>(type));
  return message.append(payload);
}

bool SwayMessages::take(std::string_view piece,
                        const std::function<void(SwayMessage, std::string_view)>& handle) {
  pending_.append(piece);
  std::string_view left = pending_;
  while (left.size() >= kHeader) {
    const std::size_t length = numberAt(left, kMagic.size());
    if (!left.starts_with(kMagic) || length > kLongestPayload) {
      return false;
    }
    if (left.size() < kHeader + length) {
      break;
    }
    handle(static_cast<SwayMessage>(numberAt(left, kMagic.size() + kNumber)), left.substr(kHeader, length));
    left.remove_prefix(kHeader + length);
  }
  pending_.erase(0, pending_.size() - left.size());
  return true;
}

}  // namespace nivlo
