// A camera's buffer, mapped into this process.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include <spa/buffer/buffer.h>

namespace nivlo::pipewire {

/// Maps the memory of a buffer for as long as anybody needs it, also after the buffer was taken back. Memory
/// that cannot be kept like that, because it belongs to the buffer itself, is not mapped. Safe to use from
/// any thread.
class SharedBuffer {
 public:
  /// Null when there is something to map, but the system refuses, or the memory is smaller than the buffer
  /// claims.
  static std::shared_ptr<SharedBuffer> map(const spa_buffer& buffer);

  ~SharedBuffer();
  SharedBuffer(const SharedBuffer&) = delete;
  SharedBuffer& operator=(const SharedBuffer&) = delete;

  /// Whether all of it outlives the buffer.
  bool isLasting() const { return lasting_; }

  std::size_t blockCount() const { return blocks_.size(); }

  /// One block's memory, in its full size. Of a buffer that is not lasting, only while the buffer exists.
  std::span<const std::uint8_t> block(std::size_t index) const { return blocks_[index].bytes; }

  /// To be called around reading: memory that a device wrote may have to be made visible to the processor.
  void beginReading() const;
  void endReading() const;

 private:
  struct Block {
    std::span<const std::uint8_t> bytes;
    void* mapping = nullptr;
    std::size_t mappedSize = 0;
    int deviceMemory = -1;  ///< file descriptor of our own
  };

  SharedBuffer() = default;
  bool add(const spa_data& data);
  void synchronise(std::uint64_t direction) const;

  std::vector<Block> blocks_;
  bool lasting_ = true;
};

}  // namespace nivlo::pipewire
