// Aztec runes: the small codes that hold a number from 0 to 255 (ISO/IEC 24778, annex A).
#pragma once

#include <optional>

#include "linux/codes/matrix/Modules.hpp"

namespace nivlo {

/// How wide a rune is, in modules.
inline constexpr int kRuneModules = 11;

struct AztecRune {
  int number = 0;
  int turns = 0;  ///< how many quarters of a turn, clockwise, it is turned by
};

/// The rune in the middle of the modules, whose number is odd. One of the seven words around its bullseye may
/// be wrong; the mode messages that other Aztec codes have there differ in four.
std::optional<AztecRune> readAztecRune(const Modules& modules);

}  // namespace nivlo
