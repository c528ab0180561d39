// Decodes the JPEG pictures of a camera into frames.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include <turbojpeg.h>

#include "linux/camera/FramePool.hpp"
#include "linux/handles/Owned.hpp"
#include "platform/drivers/VideoFrame.hpp"

namespace nivlo {

/// Used on one thread at a time. Its frames may be used on any thread and may outlive it.
class JpegDecoder {
 public:
  JpegDecoder();

  /// Decodes a picture of the given size in pixels into an I420 frame, BT.601 in full range as JPEG files
  /// are; rotation and capture time are left for the caller to set. Null when the picture is damaged,
  /// incomplete, of another size, or coded in a way that cameras do not use. The bytes must not change
  /// meanwhile.
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

  Owned<void, tjDestroy> decompressor_;
  FramePool pool_;
  std::vector<std::uint8_t>
      chroma_;  ///< the chroma planes of a picture that has more chroma samples than a frame
};

}  // namespace nivlo
