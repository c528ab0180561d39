#include "linux/camera/pipewire/SharedBuffer.hpp"

#include <cerrno>

#include <fcntl.h>
#include <linux/dma-buf.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nivlo::pipewire {
namespace {

// Touching a file's mapping behind the file's end is fatal. Device memory does not tell its size, and is
// never cut short.
bool isLargeEnough(const spa_data& data) {
  if (data.type == SPA_DATA_DmaBuf) {
    return true;
  }
  struct stat status {};
  return fstat(static_cast<int>(data.fd), &status) == 0 &&
         static_cast<std::uint64_t>(status.st_size) >= std::uint64_t{data.mapoffset} + data.maxsize;
}

}  // namespace

std::shared_ptr<SharedBuffer> SharedBuffer::map(const spa_buffer& buffer) {
  std::shared_ptr<SharedBuffer> shared(new SharedBuffer);
  for (uint32_t i = 0; i < buffer.n_datas; ++i) {
    if (!shared->add(buffer.datas[i])) {
      return nullptr;
    }
  }
  return shared;
}

SharedBuffer::~SharedBuffer() {
  for (const Block& block : blocks_) {
    if (block.mapping != nullptr) {
      munmap(block.mapping, block.mappedSize);
    }
    if (block.deviceMemory >= 0) {
      close(block.deviceMemory);
    }
  }
}

bool SharedBuffer::add(const spa_data& data) {
  if (data.type == SPA_DATA_MemPtr && data.data != nullptr) {
    blocks_.push_back({{static_cast<const std::uint8_t*>(data.data), data.maxsize}});
    lasting_ = false;
    return true;
  }
  if ((data.type != SPA_DATA_MemFd && data.type != SPA_DATA_DmaBuf) || data.maxsize == 0 ||
      !isLargeEnough(data)) {
    return false;
  }
  const std::size_t intoPage = data.mapoffset % static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  const std::size_t size = intoPage + data.maxsize;
  void* mapping = mmap(nullptr, size, PROT_READ, MAP_SHARED, static_cast<int>(data.fd),
                       static_cast<off_t>(data.mapoffset - intoPage));
  if (mapping == MAP_FAILED) {
    return false;
  }
  const int deviceMemory =
      data.type == SPA_DATA_DmaBuf ? fcntl(static_cast<int>(data.fd), F_DUPFD_CLOEXEC, 0) : -1;
  blocks_.push_back(
      {{static_cast<const std::uint8_t*>(mapping) + intoPage, data.maxsize}, mapping, size, deviceMemory});
  return true;
}

void SharedBuffer::beginReading() const { synchronise(DMA_BUF_SYNC_START); }

void SharedBuffer::endReading() const { synchronise(DMA_BUF_SYNC_END); }

void SharedBuffer::synchronise(std::uint64_t direction) const {
  for (const Block& block : blocks_) {
    if (block.deviceMemory < 0) {
      continue;
    }
    dma_buf_sync request{direction | DMA_BUF_SYNC_READ};
    while (ioctl(block.deviceMemory, DMA_BUF_IOCTL_SYNC, &request) < 0 &&
           (errno == EINTR || errno == EAGAIN)) {
    }
  }
}

}  // namespace nivlo::pipewire
