// Makes frames of what a camera has put into its buffers.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <vector>

#include <pipewire/stream.h>

#include "linux/camera/FramePool.hpp"
#include "linux/camera/pipewire/BufferLoans.hpp"
#include "linux/camera/pipewire/FrameLayout.hpp"
#include "linux/camera/pipewire/JpegDecoder.hpp"
#include "linux/camera/pipewire/StreamFormat.hpp"

namespace nivlo::pipewire {

/// Trusts nothing that a buffer says about itself. Used on the loop's thread.
class BufferReader {
 public:
  enum class BufferUse { Finished, Lent };
  struct Result {
    VideoFramePtr frame;  ///< null when the buffer holds no picture that can be used
    BufferUse use = BufferUse::Finished;
    const char* nonsense = nullptr;  ///< what is wrong with the buffer, when that is the camera's fault
  };

  /// `rotation` is the sensor's, for buffers that do not tell their own.
  explicit BufferReader(int rotation);

  void setFormat(const StreamFormat& format) { format_ = format; }

  /// Lends the buffer to the frame where it can be lent, and copies the picture where it cannot.
  Result read(pw_buffer* buffer, BufferLoans& loans);

 private:
  std::shared_ptr<VideoFrame> lendRaw(pw_buffer* buffer, BufferLoans& loans,
                                      const std::vector<Block>& blocks) const;
  std::shared_ptr<VideoFrame> copyRaw(const std::vector<Block>& blocks);
  std::shared_ptr<VideoFrame> describeRaw(const std::vector<Block>& blocks) const;
  int rotationOf(spa_buffer* buffer) const;

  int rotation_;
  std::optional<StreamFormat> format_;
  JpegDecoder jpeg_;
  FramePool copies_;
};

}  // namespace nivlo::pipewire
