// Aztec runes: the small codes that hold a number from 0 to 255 (ISO/IEC 24778, annex A).
#pragma once

#include <optional>

#include "linux/codes/matrix/Modules.hpp"

namespace nivlo {

/// Width of a rune, in modules.
inline constexpr int kRuneModules = 11;

/// A rune that was read.
struct AztecRune {
  int number = 0;
  int turns = 0;  ///< quarters of a turn, clockwise, by which the rune is turned
};

/// Returns the rune in the middle of the modules, of which there must be an odd number across. Corrects one
/// wrong word of the seven around the bullseye. That leaves runes distinct from other Aztec codes, which have
/// a mode message there that differs from every rune in at least four words.
std::optional<AztecRune> readAztecRune(const Modules& modules);

}  // namespace nivlo
