// The cards with codes that the back demo camera sees.
#pragma once

#include <vector>

#include "linux/camera/demo/Canvas.hpp"

namespace nivlo {

struct CodeCard {
  Layer picture;     ///< the card with its shadow
  Point codeCenter;  ///< the middle of the code, in pixels of the picture
};

/// One card for each of the ten kinds of code.
std::vector<CodeCard> drawCodeCards();

}  // namespace nivlo
