// Notices when a camera sees something new.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "linux/codes/picture/LumaPicture.hpp"
#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

/// Compares frames by the mean brightness of 32 x 18 cells, which a sensor's noise hardly changes and a code
/// that appears does. Takes some hundredths of a millisecond at 1280x720.
class SceneChange {
 public:
  /// Returns whether any cell of the frame is brighter or darker than in the remembered frame, by more than
  /// noise. Also returns true while no frame is remembered, and for a frame that holds no picture or one
  /// too small for the cells.
  bool differs(const VideoFrame& frame);

  /// Remembers the frame that was last given to differs.
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
