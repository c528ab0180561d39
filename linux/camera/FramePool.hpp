// Memory for frames, used again and again.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace nivlo {

/// Lends blocks of one size. A block returns to the pool when its last reference goes, on whatever thread,
/// and may outlive the pool. Callable from any thread.
class FramePool {
 public:
  explicit FramePool(std::size_t bytesPerFrame);

  /// A block with whatever was in it before.
  std::shared_ptr<std::uint8_t> borrow();

 private:
  struct Shelf;
  std::shared_ptr<Shelf> shelf_;
};

}  // namespace nivlo
