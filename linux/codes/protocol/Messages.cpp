#include "linux/codes/protocol/Messages.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <utility>

#include <utf8proc.h>

#include "platform/AVFoundation/AVMetadataObject.hpp"

namespace nivlo {

namespace {

constexpr std::size_t kCorners = 4;
constexpr std::size_t kMaxCodes = 64;

struct ReplyHeader {
  std::uint64_t number;
  std::uint64_t codeCount;
};

/// Precedes each code's text.
struct CodeHeader {
  std::array<CGPoint, kCorners> corners;
  std::uint32_t type;        ///< index into kMachineReadableCodeTypes
  std::uint32_t textLength;  ///< bytes
};

template <typename Part>
void append(std::string& message, const Part& part) {
  message.append(reinterpret_cast<const char*>(&part), sizeof part);
}

/// Moves a Part from the front of `bytes` into `part`. Returns false, and leaves both alone, if there are too
/// few bytes.
template <typename Part>
bool take(std::string_view& bytes, Part& part) {
  if (bytes.size() < sizeof part) {
    return false;
  }
  std::memcpy(&part, bytes.data(), sizeof part);
  bytes.remove_prefix(sizeof part);
  return true;
}

bool isValidUTF8(std::string_view text) {
  while (!text.empty()) {
    utf8proc_int32_t codePoint = 0;
    const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                         static_cast<utf8proc_ssize_t>(text.size()), &codePoint);
    if (length <= 0) {
      return false;
    }
    text.remove_prefix(length);
  }
  return true;
}

/// False for a NaN, which fails every comparison.
bool isInside(const LookRequest& picture, CGPoint point) {
  return point.x >= 0 && point.y >= 0 && point.x <= picture.width && point.y <= picture.height;
}

/// Returns nothing for a code that cannot be described: an unknown type, or not four finite corners.
std::optional<CodeHeader> headerOf(const LookRequest& picture, const DecodedCode& code) {
  const auto type = std::find(kMachineReadableCodeTypes.begin(), kMachineReadableCodeTypes.end(), code.type);
  if (type == kMachineReadableCodeTypes.end() || code.corners.size() != kCorners) {
    return std::nullopt;
  }
  const auto isFinite = [](CGPoint corner) { return std::isfinite(corner.x) && std::isfinite(corner.y); };
  if (!std::all_of(code.corners.begin(), code.corners.end(), isFinite)) {
    return std::nullopt;
  }
  // A text above the limit never fits a reply; the bound only keeps its length from wrapping.
  CodeHeader header{{},
                    static_cast<std::uint32_t>(type - kMachineReadableCodeTypes.begin()),
                    static_cast<std::uint32_t>(std::min(code.text.size(), kMaxReplySize))};
  std::transform(code.corners.begin(), code.corners.end(), header.corners.begin(), [&](CGPoint corner) {
    return CGPoint{std::clamp<double>(corner.x, 0, picture.width),
                   std::clamp<double>(corner.y, 0, picture.height)};
  });
  return header;
}

}  // namespace

bool LookRequest::isValid() const { return width > 0 && height > 0 && width <= kMaxPicturePixels / height; }

std::optional<LookRequest> parseRequest(std::string_view bytes) {
  LookRequest request;
  if (!take(bytes, request) || !bytes.empty() || !request.isValid()) {
    return std::nullopt;
  }
  return request;
}

std::string makeReply(const LookRequest& request, const std::vector<DecodedCode>& codes) {
  ReplyHeader header{request.number, 0};
  std::string body;
  for (const DecodedCode& code : codes) {
    const auto codeHeader = headerOf(request, code);
    const std::size_t size = sizeof header + body.size() + sizeof(CodeHeader) + code.text.size();
    if (!codeHeader || size > kMaxReplySize || header.codeCount == kMaxCodes) {
      continue;
    }
    append(body, *codeHeader);
    body += code.text;
    ++header.codeCount;
  }
  std::string reply;
  append(reply, header);
  return reply + body;
}

std::optional<std::vector<DecodedCode>> parseReply(const LookRequest& request, std::string_view bytes) {
  ReplyHeader header{};
  if (bytes.size() > kMaxReplySize || !take(bytes, header)) {
    return std::nullopt;
  }
  if (header.number != request.number || header.codeCount > kMaxCodes) {
    return std::nullopt;
  }
  std::vector<DecodedCode> codes;
  for (std::uint64_t i = 0; i < header.codeCount; ++i) {
    CodeHeader code{};
    if (!take(bytes, code) || code.type >= kMachineReadableCodeTypes.size() ||
        code.textLength > bytes.size()) {
      return std::nullopt;
    }
    if (!std::all_of(code.corners.begin(), code.corners.end(),
                     [&](CGPoint corner) { return isInside(request, corner); })) {
      return std::nullopt;
    }
    const auto text = bytes.substr(0, code.textLength);
    bytes.remove_prefix(code.textLength);
    if (isValidUTF8(text)) {
      codes.push_back({kMachineReadableCodeTypes[code.type],
                       std::string(text),
                       {code.corners.begin(), code.corners.end()}});
    }
  }
  if (!bytes.empty()) {
    return std::nullopt;
  }
  return codes;
}

}  // namespace nivlo
