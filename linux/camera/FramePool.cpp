#include "linux/camera/FramePool.hpp"

#include <mutex>
#include <utility>
#include <vector>

namespace nivlo {

struct FramePool::Shelf {
  using Block = std::unique_ptr<std::uint8_t[]>;

  // Consumers hold up to three frames while the next one is made. Blocks beyond that were needed by a slow
  // spell and are freed when they come back.
  static constexpr std::size_t kMostIdle = 4;

  Block take(std::size_t bytes) {
    const std::lock_guard lock(mutex);
    if (bytes != std::exchange(blockSize, bytes)) {
      idle.clear();
    }
    if (idle.empty()) {
      return std::make_unique_for_overwrite<std::uint8_t[]>(bytes);
    }
    Block block = std::move(idle.back());
    idle.pop_back();
    return block;
  }

  void put(Block block, std::size_t bytes) {
    const std::lock_guard lock(mutex);
    if (bytes == blockSize && idle.size() < kMostIdle) {
      idle.push_back(std::move(block));
    }
  }

  std::mutex mutex;
  std::size_t blockSize = 0;  ///< of each idle block
  std::vector<Block> idle;
};

FramePool::FramePool() : shelf_(std::make_shared<Shelf>()) {}

std::shared_ptr<std::uint8_t> FramePool::borrow(std::size_t bytes) {
  const auto giveBack = [home = std::weak_ptr(shelf_), bytes](std::uint8_t* memory) {
    Shelf::Block block(memory);
    if (const auto shelf = home.lock()) {
      shelf->put(std::move(block), bytes);
    }
  };
  return {shelf_->take(bytes).release(), giveBack};
}

}  // namespace nivlo
