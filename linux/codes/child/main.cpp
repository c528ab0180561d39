// nivlo-reader: reads the codes in the pictures that nivlo, which starts it, puts into shared memory.
#include <array>
#include <cstdio>
#include <exception>

#include <sys/mman.h>
#include <unistd.h>

#include "linux/codes/PictureReader.hpp"
#include "linux/codes/ReadingSchedule.hpp"
#include "linux/codes/child/Sandbox.hpp"
#include "linux/codes/child/Service.hpp"

namespace nivlo {
namespace {

// EX_USAGE of <sysexits.h>.
constexpr int kUsage = 64;

/// Uses every strategy once before the sandbox closes: on first use libraries query the system about the
/// processor, for which the sandbox would kill the process.
void warmUp() {
  constexpr std::size_t kEdgeLength = 32;
  const std::array<std::uint8_t, kEdgeLength * kEdgeLength> pixels{};
  PictureReader reader;
  // Every look uses at least one strategy, so this many looks use them all.
  const std::size_t looks = makeReadingSchedule().rotation.size();
  for (std::size_t look = 0; look < looks; ++look) {
    reader.read({pixels.data(), int{kEdgeLength}, int{kEdgeLength}, int{kEdgeLength}}, {});
  }
}

int run() {
  const void* pixels = mmap(nullptr, kMaxPicturePixels, PROT_READ, MAP_SHARED, kReaderPicture, 0);
  if (pixels == MAP_FAILED) {
    std::fputs("nivlo-reader: nivlo starts this program when it needs it; it does nothing by itself\n",
               stderr);
    return kUsage;
  }
  close(kReaderPicture);
  try {
    warmUp();
  } catch (const std::exception&) {
    return kReaderNotReady;
  }
  if (const auto refused = enterSandbox()) {
    return static_cast<int>(*refused);
  }
  return serve(kReaderSocket, static_cast<const std::uint8_t*>(pixels)) ? 0 : 1;
}

}  // namespace
}  // namespace nivlo

int main() { _exit(nivlo::run()); }
