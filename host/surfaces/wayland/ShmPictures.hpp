// Pictures in memory that the compositor shares.
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

/// Room for three pictures of one size: one on the screen, one on its way there, one being drawn. A picture
/// takes up memory only once something has been drawn into it. Main thread only.
class ShmPictures {
 public:
  static constexpr int kCount = 3;

  /// Returns null if the system has no memory for them or if they exceed the 2 GB of a Wayland pool.
  static std::shared_ptr<ShmPictures> make(wl_shm* shm, PictureSize size);
  ~ShmPictures();
  ShmPictures(const ShmPictures&) = delete;
  ShmPictures& operator=(const ShmPictures&) = delete;

  PictureSize size() const { return size_; }
  /// Must not be written to while anybody holds the picture. New pictures are black.
  PixelSpan pixels(int index) const;

  /// The index of a picture that nobody holds, if there is one.
  std::optional<int> free() const;
  /// Every `hold` must be followed by one `release`.
  void hold(int index) { ++holders_.at(static_cast<std::size_t>(index)); }
  void release(int index) { --holders_.at(static_cast<std::size_t>(index)); }

  /// Makes a buffer that shows a part of the picture. Each surface needs its own: the protocol does not
  /// define when a buffer that is attached to several is released.
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
