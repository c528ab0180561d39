// Compares the grey levels of a row of bars with renderings of every digit.
#pragma once

#include "linux/codes/retail/SymbolFit.hpp"

namespace nivlo {

/// Returns for each place of the symbol how well each digit correlates with the row there, from -1 to 1. Each
/// place may lie up to a quarter of a module aside if that fits better, at a small cost; all digits are
/// compared with renderings of the same blur, the one that fits the whole symbol best. Callable from any
/// thread.
DigitScores matchDigits(const BarProfile& profile, const RetailSymbol& symbol, const SymbolFit& fit);

}  // namespace nivlo
