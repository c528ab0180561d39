#include "linux/codes/process/SharedPicture.hpp"

#include <algorithm>
#include <cerrno>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/mman.h>

#include "linux/codes/protocol/Messages.hpp"

namespace nivlo {

namespace {

// F_SEAL_FUTURE_WRITE. Only <linux/fcntl.h> defines the name, and that header conflicts with <fcntl.h>.
constexpr int kSealFutureWrite = 0x0010;

[[noreturn]] void fail() {
  throw std::runtime_error(
      fmt::format("no codes are read because no memory can be shared with nivlo-reader ({}). Nivlo keeps "
                  "trying; free memory, or raise the limit on open files",
                  std::generic_category().message(errno)));
}

}  // namespace

SharedPicture::SharedPicture() {
  const Descriptor memory(memfd_create("nivlo picture", MFD_CLOEXEC | MFD_ALLOW_SEALING));
  memory_ = Descriptor(fcntl(memory.get(), F_DUPFD_CLOEXEC, kReaderPicture + 1));
  if (memory_.get() < 0 || ftruncate(memory_.get(), kMaxPicturePixels) != 0) {
    fail();
  }
  void* pixels = mmap(nullptr, kMaxPicturePixels, PROT_READ | PROT_WRITE, MAP_SHARED, memory_.get(), 0);
  if (pixels == MAP_FAILED) {
    fail();
  }
  pixels_ = static_cast<std::uint8_t*>(pixels);
  // This mapping stays writable; no later one can be.
  const int seals = F_SEAL_SHRINK | F_SEAL_GROW | kSealFutureWrite | F_SEAL_SEAL;
  if (fcntl(memory_.get(), F_ADD_SEALS, seals) != 0) {
    munmap(pixels_, kMaxPicturePixels);
    fail();
  }
}

SharedPicture::~SharedPicture() { munmap(pixels_, kMaxPicturePixels); }

void SharedPicture::write(const LumaPicture& picture) {
  std::uint8_t* out = pixels_;
  for (int y = 0; y < picture.height; ++y) {
    out = std::copy_n(picture.row(y), picture.width, out);
  }
}

}  // namespace nivlo
