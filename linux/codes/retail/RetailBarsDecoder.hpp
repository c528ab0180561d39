// Reads EAN-13, EAN-8 and UPC-E from their grey levels, also where the bars are blurred into one another.
#pragma once

#include "linux/codes/decoders/Decoder.hpp"

namespace nivlo {

/// Returns a decoder for pictures that show little more than upright bars, in a few rows each of which is the
/// mean of many. It compares them with blurred renderings of every digit. Decoders that look for edges need
/// bars that are still separate; this one reads modules as narrow as a pixel and a half.
///
/// It reads at most one code, and only one on which several rows agree. A reading is certain if it fits far
/// better than every other number. Pictures narrower than two pixels have no codes.
Decoder retailBars();

}  // namespace nivlo
