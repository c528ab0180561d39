// nivlo-reader: reads the codes in pictures that the program which started it shares with it.
#include <array>
#include <cstdio>
#include <exception>

#include <sys/mman.h>
#include <unistd.h>

#include "linux/codes/PictureReader.hpp"
#include "linux/codes/ReadingSchedule.hpp"
#include "linux/codes/child/Cage.hpp"
#include "linux/codes/child/Service.hpp"

namespace nivlo {
namespace {

constexpr int kUsage = 64;

/// Libraries ask the system about the processor when they are first used, which the cage would not survive.
void warmUp() {
  constexpr std::size_t kSide = 32;
  const std::array<std::uint8_t, kSide * kSide> pixels{};
  PictureReader reader;
  // Every look uses at least one strategy, so this many looks use them all.
  const std::size_t looks = makeReadingSchedule().rotation.size();
  for (std::size_t look = 0; look < looks; ++look) {
    reader.read({pixels.data(), int{kSide}, int{kSide}, int{kSide}}, {});
  }
}

int run() {
  const void* pixels = mmap(nullptr, kLargestPicture, PROT_READ, MAP_SHARED, kReaderPicture, 0);
  if (pixels == MAP_FAILED) {
    std::fputs("nivlo-reader is started by nivlo and of no use by itself\n", stderr);
    return kUsage;
  }
  close(kReaderPicture);
  try {
    warmUp();
    enterCage();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "nivlo-reader: %s\n", error.what());
    return kReaderUncaged;
  }
  return serve(kReaderSocket, static_cast<const std::uint8_t*>(pixels)) ? 0 : 1;
}

}  // namespace
}  // namespace nivlo

int main() { _exit(nivlo::run()); }
