#include "host/surfaces/wayland/ShmPictures.hpp"

#include <algorithm>
#include <cstdint>
#include <utility>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include "linux/handles/Descriptor.hpp"

namespace nivlo {

namespace {

/// One row more than the pictures take. A buffer for a part of a picture keeps the whole picture's stride,
/// and compositors insist that its last row, too, is a full stride long.
std::size_t bytesOf(PictureSize size) {
  const auto row = std::size_t{4} * size.width;
  return row * size.height * ShmPictures::kCount + row;
}

}  // namespace

std::shared_ptr<ShmPictures> ShmPictures::make(wl_shm* shm, PictureSize size) {
  const auto bytes = bytesOf(size);
  const Descriptor file(memfd_create("nivlo pictures", MFD_CLOEXEC | MFD_ALLOW_SEALING));
  if (file.get() < 0 || bytes > INT32_MAX || ftruncate(file.get(), static_cast<off_t>(bytes)) != 0) {
    return nullptr;
  }
  // The seals assure the compositor that the memory cannot shrink under it.
  fcntl(file.get(), F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL);
  void* memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, file.get(), 0);
  if (memory == MAP_FAILED) {
    return nullptr;
  }
  WaylandHandle<wl_shm_pool> pool(wl_shm_create_pool(shm, file.get(), static_cast<std::int32_t>(bytes)));
  return std::shared_ptr<ShmPictures>(new ShmPictures(size, memory, std::move(pool)));
}

ShmPictures::~ShmPictures() { munmap(memory_, bytesOf(size_)); }

PixelSpan ShmPictures::pixels(int index) const {
  return {static_cast<std::uint8_t*>(memory_) + index * pictureBytes(), size_.width, size_.height,
          4 * size_.width};
}

std::optional<int> ShmPictures::free() const {
  const auto found = std::find(holders_.begin(), holders_.end(), 0);
  return found != holders_.end() ? std::optional(static_cast<int>(found - holders_.begin())) : std::nullopt;
}

WaylandHandle<wl_buffer> ShmPictures::makeBuffer(int index, PixelRect part) const {
  const auto picture = pixels(index);
  const auto offset = picture.at(part.left, part.top) - static_cast<std::uint8_t*>(memory_);
  return WaylandHandle<wl_buffer>(wl_shm_pool_create_buffer(pool_.get(), static_cast<std::int32_t>(offset),
                                                            part.width, part.height, picture.stride,
                                                            WL_SHM_FORMAT_XRGB8888));
}

}  // namespace nivlo
