// Where in a row of bars a symbol may lie.
#pragma once

#include <vector>

#include "linux/codes/retail/BarProfile.hpp"
#include "linux/codes/retail/RetailSymbols.hpp"

namespace nivlo {

/// Places of a symbol's modules, in pixels of the row. Where the symbol lies backwards, its end comes before
/// its start.
struct SymbolFit {
  float start = 0;
  float end = 0;
  float bulge = 0;   ///< how far the middle is off, on a surface that is round or seen from the side
  float score = -1;  ///< correlation with what all such symbols have in common, -1..1

  /// `part` is 0 at the start and 1 at the end.
  float at(float part) const { return start + (end - start) * part + 4 * bulge * part * (1 - part); }
};

/// The best fits in both directions, none where no light zones lie around anything of that size; of symbols
/// that look the same in both, only left to right.
std::vector<SymbolFit> findFits(const BarProfile& profile, const RetailSymbol& symbol);

}  // namespace nivlo
