// Finds the middle of Aztec codes.
#pragma once

#include <vector>

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// The nested squares in the middle of an Aztec code.
struct Bullseye {
  Quad outline;     ///< of one of the squares, as the picture shows it; which corner is first is arbitrary
  int modules = 0;  ///< how many modules wide that square is
  bool lightOnDark = false;
};

/// The square of `modules` by `modules` around it, as a flat sheet would have it.
Quad surroundings(const Bullseye& bullseye, double modules);

/// Whatever looks like one, from about two pixels a module, at most three. About 0.5 ms at 1280x720.
std::vector<Bullseye> findBullseyes(const LumaPicture& picture);

}  // namespace nivlo
