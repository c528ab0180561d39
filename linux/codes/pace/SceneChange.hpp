// Notices that a camera sees something new.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "linux/codes/picture/LumaPicture.hpp"

namespace nivlo {

/// Compares pictures by the mean brightness of 32 x 18 cells, which a sensor's noise hardly moves and a code
/// that comes into view does. Takes some hundredths of a millisecond at 1280x720.
class SceneChange {
 public:
  /// Whether the frame shows something else than the one before the last call of remember: any cell is
  /// brighter or darker by more than noise. True while none is remembered, and for a frame that holds no
  /// picture or too few pixels.
  bool differs(const VideoFrame& frame);

  /// Remembers the last frame given to differs.
  void remember() { remembered_ = latest_; }

 private:
  static constexpr int kColumns = 32;
  static constexpr int kRows = 18;
  using Thumbnail = std::array<std::uint8_t, static_cast<std::size_t>(kColumns) * kRows>;

  static Thumbnail thumbnailOf(const LumaPicture& picture);

  LumaBuffer luma_;
  std::optional<Thumbnail> latest_;
  std::optional<Thumbnail> remembered_;
};

}  // namespace nivlo
