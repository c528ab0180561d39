// Memory for frames, reused from one frame to the next.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace nivlo {

/// Lends blocks of memory and reuses those that come back. Callable from any thread.
class FramePool {
 public:
  FramePool();

  /// A block of exactly this many bytes, with undefined content. When its last reference goes, on whatever
  /// thread, the block returns to the pool; it is freed instead where the pool is gone, holds enough blocks
  /// or has since been asked for another size.
  std::shared_ptr<std::uint8_t> borrow(std::size_t bytes);

 private:
  struct Shelf;
  std::shared_ptr<Shelf> shelf_;
};

}  // namespace nivlo
