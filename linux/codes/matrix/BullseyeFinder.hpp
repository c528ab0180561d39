// Finds the bullseyes in the middle of Aztec codes.
#pragma once

#include <vector>

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// The concentric squares in the middle of an Aztec code.
struct Bullseye {
  Quad outline;     ///< one of the squares in the picture; any of its corners may come first
  int modules = 0;  ///< width of that square, in modules
  bool lightOnDark = false;
};

/// Returns where the square of `modules` by `modules` around the bullseye lies if the code is flat.
Quad surroundings(const Bullseye& bullseye, double modules);

/// Returns at most three places that look like bullseyes. Modules must be at least about two pixels wide.
/// Takes about 0.5 ms at 1280x720.
std::vector<Bullseye> findBullseyes(const LumaPicture& picture);

}  // namespace nivlo
