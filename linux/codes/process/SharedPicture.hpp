// The shared memory that carries pictures to nivlo-reader.
#pragma once

#include <cstdint>

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/handles/Descriptor.hpp"

namespace nivlo {

/// Has room for kMaxPicturePixels but occupies only as much memory as the largest picture written so far.
/// Whoever holds its descriptor can read it but neither resize it nor map it writable. For use by one thread.
class SharedPicture {
 public:
  /// Throws std::runtime_error, whose text names the cause and the remedy for the log.
  SharedPicture();
  ~SharedPicture();
  SharedPicture(const SharedPicture&) = delete;
  SharedPicture& operator=(const SharedPicture&) = delete;

  /// Replaces the picture. `picture` may have kMaxPicturePixels at most, which is not checked.
  void write(const LumaPicture& picture);

  /// The descriptor for nivlo-reader to map. Its number is above those that the child inherits, so that
  /// setting up one of them cannot overwrite it.
  int descriptor() const { return memory_.get(); }

 private:
  Descriptor memory_;
  std::uint8_t* pixels_;
};

}  // namespace nivlo
