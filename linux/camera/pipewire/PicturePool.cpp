#include "linux/camera/pipewire/PicturePool.hpp"

#include <utility>

namespace nivlo::pipewire {
namespace {

constexpr std::size_t kMostIdle = 4;

}  // namespace

std::shared_ptr<std::uint8_t> PicturePool::take(std::size_t size) {
  Memory memory;
  {
    const std::lock_guard lock(mutex_);
    if (size != std::exchange(idleSize_, size)) {
      idle_.clear();
    }
    if (!idle_.empty()) {
      memory = std::move(idle_.back());
      idle_.pop_back();
    }
  }
  if (!memory) {
    memory.reset(new std::uint8_t[size]);
  }
  const auto giveBack = [home = weak_from_this(), size](std::uint8_t* bytes) {
    Memory owned(bytes);
    if (const auto pool = home.lock()) {
      pool->giveBack(std::move(owned), size);
    }
  };
  return {memory.release(), giveBack};
}

void PicturePool::giveBack(Memory memory, std::size_t size) {
  const std::lock_guard lock(mutex_);
  if (size == idleSize_ && idle_.size() < kMostIdle) {
    idle_.push_back(std::move(memory));
  }
}

}  // namespace nivlo::pipewire
