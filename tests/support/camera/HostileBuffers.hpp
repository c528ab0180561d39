// The buffers of a camera that means harm.
#pragma once

#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <spa/buffer/buffer.h>

#include "tests/support/pictures/Encoding.hpp"

namespace nivlo::test {

/// Gives buffers memory of the camera's own and misuses it. Except for the thread inside, it is used on one
/// thread.
class HostileBuffers {
 public:
  /// `memory` and `mischief` are those of CameraOptions.
  HostileBuffers(std::string memory, std::string mischief);

  /// Gives the buffer memory for pictures of this many bytes.
  void add(spa_data& data, std::size_t size);
  void remove(spa_data& data);

  /// Writes the picture into the buffer and says where it is, or lies about it.
  void fill(spa_data& data, const EncodedPicture& picture);

  /// To be called when the buffer is on its way to the reader.
  void sent(const spa_data& data);

 private:
  void lieAbout(spa_chunk& chunk, std::uint32_t size);
  void changeJpegs(const std::stop_token& stop);

  const std::string memory_, mischief_;
  std::mt19937 random_{1};
  std::mutex mutex_;          ///< guards the two fields below
  std::vector<int> files_;    ///< of the buffers there are
  long sampling_ = 0;         ///< place of the first sampling factors in the JPEG that was sent last
  std::jthread jpegChanger_;  // must be last, because the thread uses the other fields
};

}  // namespace nivlo::test
