#include "linux/codes/process/SharedPicture.hpp"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/mman.h>

#include "linux/codes/protocol/Messages.hpp"

namespace nivlo {

namespace {

// F_SEAL_FUTURE_WRITE, whose name only the kernel's header has, which excludes the C library's.
constexpr int kSealFutureWrite = 0x0010;

[[noreturn]] void fail() {
  throw std::system_error(errno, std::generic_category(), "got no memory to share");
}

}  // namespace

SharedPicture::SharedPicture() {
  const Descriptor memory(memfd_create("nivlo picture", MFD_CLOEXEC | MFD_ALLOW_SEALING));
  memory_ = Descriptor(fcntl(memory.get(), F_DUPFD_CLOEXEC, kReaderPicture + 1));
  if (memory_.get() < 0 || ftruncate(memory_.get(), kLargestPicture) != 0) {
    fail();
  }
  void* pixels = mmap(nullptr, kLargestPicture, PROT_READ | PROT_WRITE, MAP_SHARED, memory_.get(), 0);
  if (pixels == MAP_FAILED) {
    fail();
  }
  pixels_ = static_cast<std::uint8_t*>(pixels);
  // This mapping stays writable; no other can be.
  const int seals = F_SEAL_SHRINK | F_SEAL_GROW | kSealFutureWrite | F_SEAL_SEAL;
  if (fcntl(memory_.get(), F_ADD_SEALS, seals) != 0) {
    munmap(pixels_, kLargestPicture);
    fail();
  }
}

SharedPicture::~SharedPicture() { munmap(pixels_, kLargestPicture); }

void SharedPicture::write(const LumaPicture& picture) {
  std::uint8_t* out = pixels_;
  for (int y = 0; y < picture.height; ++y) {
    out = std::copy_n(picture.row(y), picture.width, out);
  }
}

}  // namespace nivlo
