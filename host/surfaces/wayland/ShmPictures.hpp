// Pictures in memory that is shared with the compositor.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <utility>

#include "host/render/PictureFit.hpp"
#include "host/render/Pixels.hpp"
#include "host/surfaces/wayland/WaylandHandles.hpp"

namespace nivlo {

/// Room for three pictures of one size: one on the screen, one on its way there, one being drawn. Memory that
/// no picture was ever drawn into costs nothing. Main thread only.
class ShmPictures {
 public:
  static constexpr int kCount = 3;

  /// Null where the system has no memory left for it.
  static std::shared_ptr<ShmPictures> make(wl_shm* shm, PictureSize size);
  ~ShmPictures();
  ShmPictures(const ShmPictures&) = delete;
  ShmPictures& operator=(const ShmPictures&) = delete;

  PictureSize size() const { return size_; }
  PixelsView pixels(int index) const;

  /// One that nobody holds.
  std::optional<int> free() const;
  void hold(int index) { ++holders_.at(static_cast<std::size_t>(index)); }
  void release(int index) { --holders_.at(static_cast<std::size_t>(index)); }

  /// A buffer of a part of the picture; each surface needs one of its own.
  WaylandHandle<wl_buffer> makeBuffer(int index, PixelRect part) const;

 private:
  ShmPictures(PictureSize size, void* memory, WaylandHandle<wl_shm_pool> pool)
      : size_(size), memory_(memory), pool_(std::move(pool)) {}
  std::size_t pictureBytes() const { return std::size_t{4} * size_.width * size_.height; }

  PictureSize size_;
  void* memory_;
  WaylandHandle<wl_shm_pool> pool_;
  std::array<int, kCount> holders_{};
};

}  // namespace nivlo
