// Finds the places in a row of bars where a symbol may lie.
#pragma once

#include <vector>

#include "linux/codes/retail/BarProfile.hpp"
#include "linux/codes/retail/RetailSymbols.hpp"

namespace nivlo {

/// The place of a symbol's modules in a row, in pixels from the row's left edge. If the symbol lies
/// backwards, `end` is less than `start`.
struct SymbolFit {
  float start = 0;
  float end = 0;
  float bulge = 0;   ///< offset of the middle, as on a surface that is round or seen at an angle
  float score = -1;  ///< correlation with the modules that all symbols of the kind share, -1 to 1

  /// Returns where in the row a part of the symbol lies: `part` is 0 at its start and 1 at its end.
  float at(float part) const { return start + (end - start) * part + 4 * bulge * part * (1 - part); }
};

/// Returns the best few fits in any order, or none if nothing of a possible size has a quiet zone at both
/// ends. Looks in both directions, except for a symmetrical symbol: its fits are all from left to right, and
/// the caller also has to try them the other way round.
std::vector<SymbolFit> findFits(const BarProfile& profile, const RetailSymbol& symbol);

}  // namespace nivlo
