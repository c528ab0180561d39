// The memory of one of a camera's buffers, mapped into this process.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include <spa/buffer/buffer.h>

#include "linux/handles/Descriptor.hpp"

namespace nivlo {

/// Stays mapped for as long as this object lives, even after PipeWire has taken the buffer back. Plain memory
/// that belongs to the buffer itself cannot outlive it; it is used in place, and isLasting() is then false.
/// Safe to use from any thread.
class BufferMemory {
 public:
  /// Null when the system refuses the mapping, when the memory is smaller than the buffer claims, or when it
  /// is of a kind that cannot be read.
  static std::unique_ptr<const BufferMemory> map(const spa_buffer& buffer);

  ~BufferMemory();
  BufferMemory(const BufferMemory&) = delete;
  BufferMemory& operator=(const BufferMemory&) = delete;

  /// Returns whether all of the memory outlives the buffer.
  bool isLasting() const { return lasting_; }

  std::size_t blockCount() const { return blocks_.size(); }

  /// All the memory of one of the buffer's data blocks. Of memory that is not lasting, valid only while
  /// PipeWire's buffer exists.
  std::span<const std::uint8_t> block(std::size_t index) const { return blocks_[index].bytes; }

  /// To be called around reading, because memory that a device wrote may first have to be made visible to the
  /// processor.
  void beginReading() const;
  void endReading() const;

 private:
  struct Block {
    std::span<const std::uint8_t> bytes;
    void* mapping = nullptr;  ///< null for memory that is used in place
    std::size_t mappedSize = 0;
    Descriptor deviceMemory{-1};  ///< a duplicate of the DMA buffer's descriptor; none for other memory
  };

  BufferMemory() = default;
  bool add(const spa_data& data);
  void synchronise(std::uint64_t direction) const;

  std::vector<Block> blocks_;
  bool lasting_ = true;
};

}  // namespace nivlo
