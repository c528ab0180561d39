// The cards with codes that are held up to the back demo camera.
#pragma once

#include <vector>

#include "linux/camera/demo/Canvas.hpp"

namespace nivlo {

struct CodeCard {
  Layer picture;     ///< the card and its shadow
  Point codeCenter;  ///< the centre of the code, in pixels of the picture
};

/// Draws one card for each of the ten symbologies.
std::vector<CodeCard> drawCodeCards();

}  // namespace nivlo
