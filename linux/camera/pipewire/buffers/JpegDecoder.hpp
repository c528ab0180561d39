// Turns a camera's JPEG pictures into frames.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "linux/camera/FramePool.hpp"
#include "platform/drivers/VideoFrame.hpp"

namespace nivlo::pipewire {

/// Used on one thread at a time; its frames may go anywhere and outlive it.
class JpegDecoder {
 public:
  JpegDecoder();

  /// The picture as an I420 frame, BT.601 full range, with no rotation and no time. Null when it is damaged,
  /// incomplete, of a kind that cameras do not send, or not of the size that was announced.
  std::shared_ptr<VideoFrame> decode(std::span<const std::uint8_t> jpeg, int width, int height);

 private:
  enum class Chroma { None, C420, C422, C444 };
  struct Target {
    std::uint8_t* bytes;
    int stride;
  };
  using Targets = std::array<Target, 3>;

  std::optional<Chroma> chromaOf(std::span<const std::uint8_t> jpeg, int width, int height) const;
  bool decodePlanes(std::span<const std::uint8_t> jpeg, const std::array<Plane, 3>& planes, int width,
                    int height);
  static bool finishChroma(Chroma chroma, const Targets& decoded, const Targets& final, int width,
                           int height);
  bool isOnlyUntidy() const;

  std::unique_ptr<void, int (*)(void*)> decompressor_;
  FramePool pool_;
  std::vector<std::uint8_t> chroma_;  ///< of a picture that has more of it than a frame
};

}  // namespace nivlo::pipewire
