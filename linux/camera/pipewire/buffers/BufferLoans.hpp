// The buffers of one stream, and which of them are on loan to frames.
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include <pipewire/stream.h>

#include "linux/camera/pipewire/buffers/BufferMemory.hpp"

namespace nivlo {

/// The handle of one buffer, made when PipeWire adds the buffer and reached from it without a search.
/// PipeWire may remove the buffer while a frame still shows its picture: the loan then keeps the handle and
/// with it the memory. `queueEntry` and `isLent` are touched on the loop's thread only.
struct StreamBuffer : std::enable_shared_from_this<StreamBuffer> {
  pw_buffer* queueEntry = nullptr;             ///< null once PipeWire has removed the buffer
  std::unique_ptr<const BufferMemory> memory;  ///< null when it cannot be read
  bool isLent = false;                         ///< true while a frame has it, so that it must not be queued
};

/// Used on the loop's thread. Only the loans themselves may end on any thread and at any time, even when the
/// buffer or this object is gone.
class BufferLoans {
 public:
  /// Makes the handle of a buffer that PipeWire has added. Returns false when its memory cannot be read; it
  /// still circulates then, but its pictures cannot be read.
  bool add(pw_buffer* buffer);

  /// Gives up the handle of a buffer that PipeWire removes. Its memory stays for a loan that is still out.
  void remove(pw_buffer* buffer);

  /// The handle of a buffer that was added and not removed since.
  static StreamBuffer& handleOf(const pw_buffer& buffer);

  /// Returns whether the memory can be lent, and the camera would be left with enough buffers to go on.
  bool canLend(const StreamBuffer& buffer) const;

  /// Lends the buffer until the last copy of the returned pointer goes, on whatever thread that happens.
  std::shared_ptr<const void> lend(StreamBuffer& buffer);

  /// The buffers whose loans have ended since the last call. The caller queues them again.
  std::vector<pw_buffer*> takeReturned();

 private:
  struct Returns {
    std::mutex mutex;
    std::vector<std::shared_ptr<StreamBuffer>> buffers;
  };
  struct Loan;

  std::vector<std::shared_ptr<StreamBuffer>> buffers_;
  std::shared_ptr<Returns> returns_ = std::make_shared<Returns>();
};

}  // namespace nivlo
