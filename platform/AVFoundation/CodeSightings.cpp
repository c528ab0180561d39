#include "platform/AVFoundation/CodeSightings.hpp"

#include <algorithm>

namespace nivlo {

namespace {

constexpr std::chrono::seconds kOutOfView{1};
constexpr std::chrono::milliseconds kLongestWatch{250};

}  // namespace

void CodeSightings::Watch::advance(Time now) {
  watched_ += std::clamp<Duration>(now - lastLook_, {}, kLongestWatch);
  lastLook_ = now;
  std::erase_if(lastSeen_, [this](const auto& entry) { return watched_ - entry.second >= kOutOfView; });
}

std::optional<DecodedCode> CodeSightings::nextNew(const std::string& camera, std::vector<DecodedCode> seen,
                                                  Time now) {
  auto& byCamera = byCamera_[camera];
  byCamera.advance(now);
  byAny_.advance(now);
  const auto record = [&](const DecodedCode& code) {
    byCamera.see(keyOf(code));
    byAny_.see(keyOf(code));
  };
  std::optional<DecodedCode> coming;
  for (auto& code : seen) {
    if (byCamera.remembers(keyOf(code)) || byAny_.remembers(keyOf(code))) {
      record(code);
    } else {
      coming = std::move(code);
    }
  }
  if (coming) {
    record(*coming);
  }
  return coming;
}

void CodeSightings::forget(const DecodedCode& code) {
  byAny_.forget(keyOf(code));
  for (auto& [camera, watch] : byCamera_) {
    watch.forget(keyOf(code));
  }
}

}  // namespace nivlo
