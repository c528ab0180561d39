// Reads EAN-13, EAN-8 and UPC-E by their grey levels.
#pragma once

#include "linux/codes/decoders/Decoder.hpp"

namespace nivlo {

/// For a picture that shows little else than upright bars, of few rows, each a mean of many. Compares them
/// with what each digit looks like when it is blurred, where decoders of edges need bars that can be told
/// from each other: a module may be a pixel and a half wide. At most one code, read in several rows; one that
/// fits far better than any other number is certain.
Decoder retailBars();

}  // namespace nivlo
