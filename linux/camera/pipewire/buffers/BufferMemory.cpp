#include "linux/camera/pipewire/buffers/BufferMemory.hpp"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <linux/dma-buf.h>
#include <linux/magic.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace nivlo {
namespace {

enum class MemoryKind { Unreadable, CanShrink, Lasting, Device };

// Tells by the descriptor itself, because a camera can call any memory a DMA buffer. One of those cannot
// shrink, and is no regular file. Only shared memory has seals, and reading it never blocks; huge pages can
// be punched out of it although it is sealed, so that only the usual kind is mapped.
MemoryKind kindOf(int file) {
  struct stat status {};
  struct statfs system {};
  if (fstat(file, &status) != 0 || fstatfs(file, &system) != 0) {
    return MemoryKind::Unreadable;
  }
  if (!S_ISREG(status.st_mode)) {
    return MemoryKind::Device;
  }
  const int seals = fcntl(file, F_GET_SEALS);
  if (seals < 0) {
    return MemoryKind::Unreadable;
  }
  return (seals & F_SEAL_SHRINK) != 0 && system.f_type == TMPFS_MAGIC ? MemoryKind::Lasting
                                                                      : MemoryKind::CanShrink;
}

// Asks for the end of the file because fstat() does not tell the size of a DMA buffer.
bool isLargeEnough(int file, const spa_data& data) {
  const off_t size = lseek(file, 0, SEEK_END);
  return size > 0 && static_cast<std::uint64_t>(size) >= std::uint64_t{data.mapoffset} + data.maxsize;
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
    blocks_.push_back({.size = data.maxsize, .bytes = static_cast<const std::uint8_t*>(data.data)});
    lasting_ = false;
    return true;
  }
  if ((data.type != SPA_DATA_MemFd && data.type != SPA_DATA_DmaBuf) || data.maxsize == 0) {
    return false;
  }
  Descriptor file(fcntl(static_cast<int>(data.fd), F_DUPFD_CLOEXEC, 0));
  if (file.get() < 0 || !isLargeEnough(file.get(), data)) {
    return false;
  }
  switch (kindOf(file.get())) {
    case MemoryKind::Unreadable:
      return false;
    case MemoryKind::Lasting:
      return addMapped(data, std::move(file), false);
    case MemoryKind::Device:
      return addMapped(data, std::move(file), true);
    case MemoryKind::CanShrink:
      break;
  }
  blocks_.push_back({.size = data.maxsize, .file = std::move(file), .fileOffset = off_t{data.mapoffset}});
  lasting_ = false;
  return true;
}

bool BufferMemory::addMapped(const spa_data& data, Descriptor file, bool isDevice) {
  const std::size_t intoPage = data.mapoffset % static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  const std::size_t size = intoPage + data.maxsize;
  void* mapping =
      mmap(nullptr, size, PROT_READ, MAP_SHARED, file.get(), static_cast<off_t>(data.mapoffset - intoPage));
  if (mapping == MAP_FAILED) {
    return false;
  }
  blocks_.push_back({.size = data.maxsize,
                     .bytes = static_cast<const std::uint8_t*>(mapping) + intoPage,
                     .mapping = mapping,
                     .mappedSize = size,
                     .file = isDevice ? std::move(file) : Descriptor(),
                     .isDevice = isDevice});
  return true;
}

bool BufferMemory::copy(std::size_t index, std::size_t offset, std::span<std::uint8_t> target) const {
  const Block& block = blocks_[index];
  if (block.bytes != nullptr) {
    std::copy_n(block.bytes + offset, target.size(), target.data());
    return true;
  }
  auto from = block.fileOffset + static_cast<off_t>(offset);
  while (!target.empty()) {
    const ssize_t got = pread(block.file.get(), target.data(), target.size(), from);
    if (got < 0 && errno == EINTR) {
      continue;
    }
    if (got <= 0) {
      return false;
    }
    target = target.subspan(static_cast<std::size_t>(got));
    from += got;
  }
  return true;
}

void BufferMemory::beginReading() const { synchronise(DMA_BUF_SYNC_START); }

void BufferMemory::endReading() const { synchronise(DMA_BUF_SYNC_END); }

void BufferMemory::synchronise(std::uint64_t direction) const {
  for (const Block& block : blocks_) {
    if (!block.isDevice) {
      continue;
    }
    dma_buf_sync request{direction | DMA_BUF_SYNC_READ};
    while (ioctl(block.file.get(), DMA_BUF_IOCTL_SYNC, &request) < 0 && (errno == EINTR || errno == EAGAIN)) {
    }
  }
}

}  // namespace nivlo
