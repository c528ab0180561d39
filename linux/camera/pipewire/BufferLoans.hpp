// Which of a camera's buffers are out on loan to frames.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include <pipewire/stream.h>

#include "linux/camera/pipewire/SharedBuffer.hpp"

namespace nivlo::pipewire {

/// Keeps the buffers of one stream. Used on the loop's thread; only the loans themselves may end on any
/// thread and at any time, also when the buffers or this object are gone.
class BufferLoans {
 public:
  /// A buffer that has come. Returns false when its memory cannot be used.
  bool add(pw_buffer* buffer);

  /// A buffer that is going. Its memory stays for the loans that are out.
  void remove(pw_buffer* buffer);

  /// The memory of a buffer, null when that cannot be used.
  const SharedBuffer* memoryOf(const pw_buffer* buffer) const;

  /// Whether the camera would have enough buffers left to go on.
  bool canLend(const pw_buffer* buffer) const;

  /// The buffer is lent until the last copy of the returned pointer goes, which is from any thread.
  std::shared_ptr<const void> lend(const pw_buffer* buffer);

  /// The buffers that came back since the last call and are to be queued again.
  std::vector<pw_buffer*> takeReturned();

 private:
  using Ticket = std::uint64_t;
  struct Entry {
    pw_buffer* buffer;
    std::shared_ptr<SharedBuffer> memory;
    bool lent = false;
  };
  struct Returns {
    std::mutex mutex;
    std::vector<Ticket> tickets;
  };
  struct Loan;

  std::map<Ticket, Entry> entries_;
  std::map<const pw_buffer*, Ticket> tickets_;
  Ticket next_ = 0;
  std::size_t lentCount_ = 0;
  std::shared_ptr<Returns> returns_ = std::make_shared<Returns>();
};

}  // namespace nivlo::pipewire
