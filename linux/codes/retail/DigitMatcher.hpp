// Compares grey levels with what each digit looks like.
#pragma once

#include "linux/codes/retail/SymbolFit.hpp"

namespace nivlo {

/// For each digit of the symbol the correlation with each possible one, -1..1, each a little aside if that
/// fits better, all as blurred as fits best.
DigitScores matchDigits(const BarProfile& profile, const RetailSymbol& symbol, const SymbolFit& fit);

}  // namespace nivlo
