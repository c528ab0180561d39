#include "linux/camera/pipewire/buffers/BufferMemory.hpp"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <linux/dma-buf.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nivlo {
namespace {

// Reading a mapping beyond the end of its file ends the process with SIGBUS. For a DMA buffer fstat() does
// not tell the size, but such a buffer cannot shrink either.
bool isLargeEnough(const spa_data& data) {
  if (data.type == SPA_DATA_DmaBuf) {
    return true;
  }
  struct stat status {};
  return fstat(static_cast<int>(data.fd), &status) == 0 &&
         static_cast<std::uint64_t>(status.st_size) >= std::uint64_t{data.mapoffset} + data.maxsize;
}

}  // namespace

std::unique_ptr<const BufferMemory> BufferMemory::map(const spa_buffer& buffer) {
  std::unique_ptr<BufferMemory> memory(new BufferMemory);
  for (uint32_t i = 0; i < buffer.n_datas; ++i) {
    if (!memory->add(buffer.datas[i])) {
      return nullptr;
    }
  }
  return memory;
}

BufferMemory::~BufferMemory() {
  for (const Block& block : blocks_) {
    if (block.mapping != nullptr) {
      munmap(block.mapping, block.mappedSize);
    }
  }
}

bool BufferMemory::add(const spa_data& data) {
  if (data.type == SPA_DATA_MemPtr && data.data != nullptr) {
    blocks_.push_back({.bytes = {static_cast<const std::uint8_t*>(data.data), data.maxsize}});
    lasting_ = false;
    return true;
  }
  if ((data.type != SPA_DATA_MemFd && data.type != SPA_DATA_DmaBuf) || data.maxsize == 0 ||
      !isLargeEnough(data)) {
    return false;
  }
  const int file = static_cast<int>(data.fd);
  const std::size_t intoPage = data.mapoffset % static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  const std::size_t size = intoPage + data.maxsize;
  void* mapping =
      mmap(nullptr, size, PROT_READ, MAP_SHARED, file, static_cast<off_t>(data.mapoffset - intoPage));
  if (mapping == MAP_FAILED) {
    return false;
  }
  const auto* bytes = static_cast<const std::uint8_t*>(mapping) + intoPage;
  Descriptor deviceMemory(data.type == SPA_DATA_DmaBuf ? fcntl(file, F_DUPFD_CLOEXEC, 0) : -1);
  blocks_.push_back({{bytes, data.maxsize}, mapping, size, std::move(deviceMemory)});
  return true;
}

void BufferMemory::beginReading() const { synchronise(DMA_BUF_SYNC_START); }

void BufferMemory::endReading() const { synchronise(DMA_BUF_SYNC_END); }

void BufferMemory::synchronise(std::uint64_t direction) const {
  for (const Block& block : blocks_) {
    if (block.deviceMemory.get() < 0) {
      continue;
    }
    dma_buf_sync request{direction | DMA_BUF_SYNC_READ};
    while (ioctl(block.deviceMemory.get(), DMA_BUF_IOCTL_SYNC, &request) < 0 &&
           (errno == EINTR || errno == EAGAIN)) {
    }
  }
}

}  // namespace nivlo
