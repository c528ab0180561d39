// Finds QR codes by the squares in three of their corners.
#pragma once

#include <array>
#include <vector>

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// How wide the smallest QR code is (ISO/IEC 18004).
inline constexpr int kLeastQRModules = 21;

/// Where a QR code seems to be.
struct QRPlace {
  std::array<Quad, 3> squares;  ///< in the top left corner, the top right and the bottom left one
  Quad outline;                 ///< of the whole code; where the squares' sides lead to, in the fourth corner
  /// How many wide it is, judged by their size: 21 to 177 in steps of 4 (ISO/IEC 18004), at times a step off.
  int modules = 0;
  bool lightOnDark = false;
};

/// The likeliest places first, at most two. Squares are seen from about two pixels a module.
std::vector<QRPlace> findQRPlaces(const LumaPicture& picture);

}  // namespace nivlo
