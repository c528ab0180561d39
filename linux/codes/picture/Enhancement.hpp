// Makes codes in a picture easier to tell from what they are printed on.
#pragma once

#include "linux/codes/picture/LumaPicture.hpp"

namespace nivlo {

enum class Enhancement {
  None,
  Sharp,         ///< against blur
  EvenContrast,  ///< every part of the picture with about the same mean and contrast, against reflections
  Inverted,      ///< light what was dark
};

/// The picture itself for None, else a changed one in `buffer`, valid as long as that keeps it.
LumaPicture enhanced(const LumaPicture& picture, Enhancement enhancement, LumaBuffer& buffer);

}  // namespace nivlo
