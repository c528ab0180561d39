// Memory for pictures, used again and again.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace nivlo::pipewire {

/// Safe to use from any thread.
class PicturePool : public std::enable_shared_from_this<PicturePool> {
 public:
  /// Memory of exactly this size. It comes back to the pool when its last reference goes, as long as the pool
  /// is there.
  std::shared_ptr<std::uint8_t> take(std::size_t size);

 private:
  using Memory = std::unique_ptr<std::uint8_t[]>;

  void giveBack(Memory memory, std::size_t size);

  std::mutex mutex_;
  std::vector<Memory> idle_;
  std::size_t idleSize_ = 0;  ///< bytes of each one
};

}  // namespace nivlo::pipewire
