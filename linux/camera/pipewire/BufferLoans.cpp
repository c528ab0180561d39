#include "linux/camera/pipewire/BufferLoans.hpp"

#include <utility>

namespace nivlo::pipewire {
namespace {

// One that the camera fills, and one on its way here.
constexpr std::size_t kNeededByCamera = 2;

}  // namespace

struct BufferLoans::Loan {
  std::shared_ptr<Returns> returns;
  std::shared_ptr<SharedBuffer> memory;
  Ticket ticket;

  ~Loan() {
    memory->endReading();
    const std::lock_guard lock(returns->mutex);
    returns->tickets.push_back(ticket);
  }
};

bool BufferLoans::add(pw_buffer* buffer) {
  std::shared_ptr<SharedBuffer> memory = SharedBuffer::map(*buffer->buffer);
  const bool usable = memory != nullptr;
  // Tickets are never used twice: one that comes back late must not stand for a newer buffer at the same
  // address.
  const Ticket ticket = next_++;
  entries_.emplace(ticket, Entry{buffer, std::move(memory)});
  tickets_[buffer] = ticket;
  return usable;
}

void BufferLoans::remove(pw_buffer* buffer) {
  const auto found = tickets_.find(buffer);
  if (found == tickets_.end()) {
    return;
  }
  const auto entry = entries_.find(found->second);
  if (entry->second.lent) {
    --lentCount_;
  }
  entries_.erase(entry);
  tickets_.erase(found);
}

const SharedBuffer* BufferLoans::memoryOf(const pw_buffer* buffer) const {
  const auto found = tickets_.find(buffer);
  return found != tickets_.end() ? entries_.at(found->second).memory.get() : nullptr;
}

bool BufferLoans::canLend(const pw_buffer* buffer) const {
  const SharedBuffer* memory = memoryOf(buffer);
  return memory != nullptr && memory->isLasting() && entries_.size() - lentCount_ > kNeededByCamera;
}

std::shared_ptr<const void> BufferLoans::lend(const pw_buffer* buffer) {
  const Ticket ticket = tickets_.at(buffer);
  Entry& entry = entries_.at(ticket);
  entry.lent = true;
  ++lentCount_;
  entry.memory->beginReading();
  return std::shared_ptr<const Loan>(new Loan{returns_, entry.memory, ticket});
}

std::vector<pw_buffer*> BufferLoans::takeReturned() {
  std::vector<Ticket> tickets;
  {
    const std::lock_guard lock(returns_->mutex);
    tickets.swap(returns_->tickets);
  }
  std::vector<pw_buffer*> buffers;
  for (const Ticket ticket : tickets) {
    const auto found = entries_.find(ticket);
    if (found == entries_.end()) {
      continue;
    }
    found->second.lent = false;
    --lentCount_;
    buffers.push_back(found->second.buffer);
  }
  return buffers;
}

}  // namespace nivlo::pipewire
