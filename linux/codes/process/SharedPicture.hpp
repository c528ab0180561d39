// The memory in which pictures go to the reader.
#pragma once

#include <cstdint>

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/handles/Descriptor.hpp"

namespace nivlo {

/// Has room for kLargestPicture; takes as much memory as the largest picture so far. Nobody can change its
/// size or get to write to it by its descriptor.
class SharedPicture {
 public:
  /// Throws std::system_error.
  SharedPicture();
  ~SharedPicture();
  SharedPicture(const SharedPicture&) = delete;
  SharedPicture& operator=(const SharedPicture&) = delete;

  /// The picture must have kLargestPicture at most.
  void write(const LumaPicture& picture);

  /// For a reader to map; never a standard one or one of those that the reader begins with.
  int descriptor() const { return memory_.get(); }

 private:
  Descriptor memory_;
  std::uint8_t* pixels_;
};

}  // namespace nivlo
