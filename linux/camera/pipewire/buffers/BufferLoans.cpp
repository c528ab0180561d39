#include "linux/camera/pipewire/buffers/BufferLoans.hpp"

#include <algorithm>
#include <utility>

namespace nivlo {
namespace {

// One buffer that the camera fills, and one that is on its way to us.
constexpr int kNeededByCamera = 2;

}  // namespace

struct BufferLoans::Loan {
  Loan(std::shared_ptr<StreamBuffer> lent, const std::shared_ptr<Returns>& home)
      : buffer(std::move(lent)), returns(home) {
    buffer->memory->beginReading();
  }

  ~Loan() {
    buffer->memory->endReading();
    // Without a stream nobody would queue the buffer again; its memory goes here and now.
    if (const auto home = returns.lock()) {
      const std::lock_guard lock(home->mutex);
      home->buffers.push_back(std::move(buffer));
    }
  }

  Loan(const Loan&) = delete;
  Loan& operator=(const Loan&) = delete;

  std::shared_ptr<StreamBuffer> buffer;
  std::weak_ptr<Returns> returns;
};

bool BufferLoans::add(pw_buffer* buffer) {
  const auto& handle = buffers_.emplace_back(std::make_shared<StreamBuffer>());
  handle->queueEntry = buffer;
  handle->memory = BufferMemory::map(*buffer->buffer);
  buffer->user_data = handle.get();
  return handle->memory != nullptr;
}

void BufferLoans::remove(pw_buffer* buffer) {
  StreamBuffer& handle = handleOf(*buffer);
  buffer->user_data = nullptr;
  handle.queueEntry = nullptr;
  std::erase_if(buffers_, [&](const auto& each) { return each.get() == &handle; });
}

StreamBuffer& BufferLoans::handleOf(const pw_buffer& buffer) {
  return *static_cast<StreamBuffer*>(buffer.user_data);
}

bool BufferLoans::canLend(const StreamBuffer& buffer) const {
  const auto left = std::ranges::count_if(buffers_, [](const auto& each) { return !each->isLent; });
  return buffer.memory && buffer.memory->isLasting() && left > kNeededByCamera;
}

std::shared_ptr<const void> BufferLoans::lend(StreamBuffer& buffer) {
  buffer.isLent = true;
  return std::make_shared<Loan>(buffer.shared_from_this(), returns_);
}

std::vector<pw_buffer*> BufferLoans::takeReturned() {
  std::vector<std::shared_ptr<StreamBuffer>> returned;
  {
    const std::lock_guard lock(returns_->mutex);
    returned.swap(returns_->buffers);
  }
  std::vector<pw_buffer*> buffers;
  for (const auto& buffer : returned) {
    buffer->isLent = false;
    if (buffer->queueEntry != nullptr) {
      buffers.push_back(buffer->queueEntry);
    }
  }
  return buffers;
}

}  // namespace nivlo
