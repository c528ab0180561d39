// Makes frames of the pictures that a camera puts into its buffers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <pipewire/stream.h>

#include "linux/camera/FramePool.hpp"
#include "linux/camera/pipewire/StreamFormat.hpp"
#include "linux/camera/pipewire/buffers/BufferLoans.hpp"
#include "linux/camera/pipewire/buffers/FrameLayout.hpp"
#include "linux/camera/pipewire/buffers/JpegDecoder.hpp"

namespace nivlo {

/// Trusts nothing that a buffer says about itself. Used on the loop's thread.
class BufferReader {
 public:
  struct Result {
    VideoFramePtr frame;           ///< null when the buffer holds no usable picture
    const char* defect = nullptr;  ///< for people: what the camera did wrong; null where it is not to blame
  };

  /// Where a picture, or one of its planes, lies in a data block. It has been checked to lie inside.
  struct Place {
    std::size_t offset = 0;
    std::size_t size = 0;
    int stride = 0;  ///< see DataBlock
  };

  /// `rotation` is the sensor's (see VideoFrame::rotation), for buffers that carry none of their own.
  explicit BufferReader(int rotation);

  /// To be called before the first read and whenever the stream changes its format.
  void setFormat(const StreamFormat& format) { format_ = format; }

  /// Lends the buffer to the frame where that is possible, which StreamBuffer::isLent then says, and copies
  /// or decodes the picture otherwise. The buffer must be one that PipeWire has not removed.
  Result read(StreamBuffer& buffer, BufferLoans& loans);

 private:
  std::shared_ptr<VideoFrame> lendRaw(StreamBuffer& buffer, BufferLoans& loans,
                                      const std::vector<Place>& places) const;
  std::shared_ptr<VideoFrame> copyRaw(const BufferMemory& memory, const std::vector<Place>& places);
  std::shared_ptr<VideoFrame> decodeJpeg(const BufferMemory& memory, const Place& place);
  std::size_t sizeToCopy(const Place& place) const;
  std::shared_ptr<VideoFrame> describeRaw(const std::vector<DataBlock>& blocks) const;
  int rotationOf(spa_buffer* buffer) const;

  int rotation_;
  std::optional<StreamFormat> format_;
  JpegDecoder jpeg_;
  std::vector<std::uint8_t> compressed_;
  FramePool copies_;
};

}  // namespace nivlo
