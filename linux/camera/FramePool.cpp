#include "linux/camera/FramePool.hpp"

#include <mutex>
#include <utility>
#include <vector>

namespace nivlo {

struct FramePool::Shelf {
  using Block = std::unique_ptr<std::uint8_t[]>;
  // Consumers hold a frame or two each; what a slow spell took beyond that is given back to the system.
  static constexpr std::size_t capacity = 6;

  explicit Shelf(std::size_t bytes) : bytesPerFrame(bytes) {}

  Block take() {
    const std::lock_guard lock(mutex);
    if (blocks.empty()) {
      return std::make_unique_for_overwrite<std::uint8_t[]>(bytesPerFrame);
    }
    Block block = std::move(blocks.back());
    blocks.pop_back();
    return block;
  }

  void put(Block block) {
    const std::lock_guard lock(mutex);
    if (blocks.size() < capacity) {
      blocks.push_back(std::move(block));
    }
  }

  const std::size_t bytesPerFrame;
  std::mutex mutex;
  std::vector<Block> blocks;
};

FramePool::FramePool(std::size_t bytesPerFrame) : shelf_(std::make_shared<Shelf>(bytesPerFrame)) {}

std::shared_ptr<std::uint8_t> FramePool::borrow() {
  const auto giveBack = [shelf = shelf_](std::uint8_t* bytes) { shelf->put(Shelf::Block(bytes)); };
  return {shelf_->take().release(), giveBack};
}

}  // namespace nivlo
