// The memory of one of a camera's buffers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include <spa/buffer/buffer.h>
#include <sys/types.h>

#include "linux/handles/Descriptor.hpp"

namespace nivlo {

/// Memory that cannot shrink is mapped, and stays so for as long as this object lives, even after PipeWire
/// has taken the buffer back. Memory that its camera could shrink is copied by the system instead, because
/// touching a page that is gone ends the process. Plain memory that belongs to the buffer itself is used in
/// place. Safe to use from any thread.
class BufferMemory {
 public:
  /// Null when the system refuses, when the memory is smaller than the buffer claims, or when it is of a kind
  /// that cannot be read.
  static std::unique_ptr<const BufferMemory> map(const spa_buffer& buffer);

  ~BufferMemory();
  BufferMemory(const BufferMemory&) = delete;
  BufferMemory& operator=(const BufferMemory&) = delete;

  /// Returns whether all of the memory is mapped, so that it outlives the buffer.
  bool isLasting() const { return lasting_; }

  std::size_t blockCount() const { return blocks_.size(); }
  std::size_t sizeOf(std::size_t block) const { return blocks_[block].size; }

  /// One of the buffer's data blocks, in place; only where isLasting(). The camera may write to it at any
  /// time.
  std::span<const std::uint8_t> inPlace(std::size_t block) const {
    return {blocks_[block].bytes, blocks_[block].size};
  }

  /// Fills `target` from the block, which must reach that far. Returns false when the camera has meanwhile
  /// shrunk the memory. Where it is not lasting, PipeWire's buffer must still exist.
  bool copy(std::size_t block, std::size_t offset, std::span<std::uint8_t> target) const;

  /// To be called around reading, because memory that a device wrote may first have to be made visible to the
  /// processor.
  void beginReading() const;
  void endReading() const;

 private:
  struct Block {
    std::size_t size = 0;
    const std::uint8_t* bytes = nullptr;  ///< null for memory that is read from `file`
    void* mapping = nullptr;              ///< null for memory that is not mapped
    std::size_t mappedSize = 0;
    Descriptor file{-1};  ///< a duplicate; none where it is not needed any more
    off_t fileOffset = 0;
    bool isDevice = false;
  };

  BufferMemory() = default;
  bool add(const spa_data& data);
  bool addMapped(const spa_data& data, Descriptor file, bool isDevice);
  void synchronise(std::uint64_t direction) const;

  std::vector<Block> blocks_;
  bool lasting_ = true;
};

}  // namespace nivlo
