// Makes the codes in a picture stand out from what they are printed on.
#pragma once

#include "linux/codes/picture/LumaPicture.hpp"

namespace nivlo {

/// The ways of preparing a picture for a decoder.
enum class Enhancement {
  None,
  Sharp,         ///< sharpens edges, against blur
  EvenContrast,  ///< gives every part of the picture about the same mean and contrast, against reflections
  Inverted,      ///< swaps dark and light
};

/// Returns the picture itself for None, else an enhanced copy in `buffer`, valid until the buffer is used
/// again.
LumaPicture enhanced(const LumaPicture& picture, Enhancement enhancement, LumaBuffer& buffer);

}  // namespace nivlo
