// Finds QR codes by the finder patterns in three of their corners.
#pragma once

#include <array>
#include <vector>

#include "linux/codes/picture/LumaPicture.hpp"
#include "linux/codes/picture/Quad.hpp"

namespace nivlo {

/// Width of the smallest QR code, in modules (ISO/IEC 18004).
inline constexpr int kMinQRModules = 21;

/// Width of a finder pattern, in modules (ISO/IEC 18004).
inline constexpr int kFinderModules = 7;

/// The place of a possible QR code.
struct QRPlace {
  std::array<Quad, 3> finders;  ///< at the top left, top right and bottom left
  Quad outline;  ///< of the whole code; the fourth corner is where the edges of two finders lead
  /// Width in modules, estimated from the size of the finders: 21 to 177 in steps of 4 (ISO/IEC 18004). It
  /// may be one step off.
  int modules = 0;
  bool lightOnDark = false;
};

/// Returns at most two places, the likeliest first. Modules must be at least about two pixels wide.
std::vector<QRPlace> findQRPlaces(const LumaPicture& picture);

}  // namespace nivlo
