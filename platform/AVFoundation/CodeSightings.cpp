#include "platform/AVFoundation/CodeSightings.hpp"

#include <algorithm>

namespace nivlo {

namespace {

constexpr std::chrono::seconds kOutOfView{1};
constexpr std::chrono::milliseconds kLongestWatch{250};

}  // namespace

std::vector<DecodedCode> CodeSightings::comingIntoView(std::vector<DecodedCode> seen, Time now) {
  watched_ += std::clamp<std::chrono::steady_clock::duration>(now - lastLook_, {}, kLongestWatch);
  lastLook_ = now;
  std::erase_if(lastSeen_, [this](const auto& entry) { return watched_ - entry.second >= kOutOfView; });
  std::vector<DecodedCode> coming;
  for (auto& code : seen) {
    if (lastSeen_.insert_or_assign(Key(code.type, code.text), watched_).second) {
      coming.push_back(std::move(code));
    }
  }
  return coming;
}

void CodeSightings::forget(const std::vector<DecodedCode>& codes) {
  for (const auto& code : codes) {
    lastSeen_.erase(Key(code.type, code.text));
  }
}

}  // namespace nivlo
