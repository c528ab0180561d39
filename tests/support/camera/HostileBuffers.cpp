#include "tests/support/camera/HostileBuffers.hpp"

#include <algorithm>
#include <array>
#include <climits>
#include <utility>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace nivlo::test {
namespace {

constexpr off_t kPage = 4096;

/// The place of the first component's sampling factors: behind the marker, the length, the bits of a sample,
/// the size, the number of components, and the component's ID.
long samplingIn(const std::vector<std::uint8_t>& jpeg) {
  constexpr std::array<std::uint8_t, 2> kStartOfFrame{0xFF, 0xC0};
  return std::ranges::search(jpeg, kStartOfFrame).begin() - jpeg.begin() + 11;
}

}  // namespace

HostileBuffers::HostileBuffers(std::string memory, std::string mischief)
    : memory_(std::move(memory)), mischief_(std::move(mischief)) {
  if (mischief_ == "jpeg") {
    jpegChanger_ = std::jthread([this](const std::stop_token& stop) { changeJpegs(stop); });
  }
}

void HostileBuffers::add(spa_data& data, std::size_t size) {
  const int file = memfd_create("hostile", MFD_CLOEXEC | MFD_ALLOW_SEALING);
  const bool isSmall = memory_ == "small";
  if (ftruncate(file, isSmall ? kPage : static_cast<off_t>(size)) != 0) {
    return;
  }
  if (isSmall || memory_ == "sealed") {
    fcntl(file, F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW);
  }
  data.type = isSmall ? SPA_DATA_DmaBuf : SPA_DATA_MemFd;
  data.flags = SPA_DATA_FLAG_READWRITE;
  data.fd = file;
  data.mapoffset = 0;
  data.maxsize = static_cast<std::uint32_t>(size);
  data.data = nullptr;
  const std::lock_guard lock(mutex_);
  files_.push_back(file);
}

void HostileBuffers::remove(spa_data& data) {
  const std::lock_guard lock(mutex_);
  std::erase(files_, static_cast<int>(data.fd));
  close(static_cast<int>(data.fd));
}

void HostileBuffers::fill(spa_data& data, const EncodedPicture& picture) {
  const std::lock_guard lock(mutex_);
  if (pwrite(static_cast<int>(data.fd), picture.bytes.data(), picture.bytes.size(), 0) < 0) {
    return;
  }
  const auto size = static_cast<std::uint32_t>(picture.bytes.size());
  *data.chunk = {.offset = 0, .size = size, .stride = picture.stride, .flags = 0};
  if (mischief_ == "chunks") {
    lieAbout(*data.chunk, size);
  } else if (mischief_ == "jpeg") {
    sampling_ = samplingIn(picture.bytes);
  }
}

/// Every other chunk is true, so that pictures arrive in between.
void HostileBuffers::lieAbout(spa_chunk& chunk, std::uint32_t size) {
  const std::array<std::uint32_t, 8> places{0, 1, kPage, size - 1, size, size + 1, INT_MAX, UINT_MAX};
  const std::array<std::int32_t, 8> strides{
      0, 1, -chunk.stride, chunk.stride - 1, chunk.stride + 1, INT_MIN, INT_MAX, 2 * chunk.stride};
  if (random_() % 2 == 0) {
    chunk.offset = places[random_() % places.size()];
    chunk.size = places[random_() % places.size()];
    chunk.stride = strides[random_() % strides.size()];
  }
}

void HostileBuffers::sent(const spa_data& data) {
  if (memory_ == "shrinking" && random_() % 2 == 0) {
    // The next fill() makes it grow again.
    [[maybe_unused]] const int result = ftruncate(static_cast<int>(data.fd), kPage);
  }
}

/// Goes on while readers decode.
void HostileBuffers::changeJpegs(const std::stop_token& stop) {
  constexpr std::array<std::uint8_t, 4> kFactors{0x11, 0x22, 0x21, 0x12};
  for (std::size_t turn = 0; !stop.stop_requested(); ++turn) {
    const std::lock_guard lock(mutex_);
    for (const int file : files_) {
      if (sampling_ > 0 && pwrite(file, &kFactors[turn % kFactors.size()], 1, sampling_) < 0) {
        return;
      }
    }
  }
}

}  // namespace nivlo::test
