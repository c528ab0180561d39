// Decodes with ZXing, which nothing else calls.
#pragma once

#include "linux/codes/decoders/Decoder.hpp"

namespace nivlo {

enum class Symbologies {
  All,
  Matrix,  ///< QR, PDF417 and Aztec
  Linear,  ///< all 1-D codes
  Bars,    ///< all that consist of bars: Linear and PDF417
  Aztec,
};

enum class Effort {
  Quick,    ///< finds most matrix codes, and 1-D codes that are large, upright and sharp
  Upright,  ///< scans rows closely: finds most upright 1-D codes, but none that lies on its side
  Thorough  ///< scans rows and columns closely
};

/// Returns a decoder that reads the ten symbologies, or those of them asked for, and no others. UPC-A is
/// reported as EAN-13 with a leading 0. Code 39 with a correct modulo-43 check character is reported as Code
/// 39 mod 43, and the text keeps that character.
///
/// Text is always valid UTF-8: it is converted from the character set that the code names, else from the one
/// that ZXing guesses, which is ISO 8859-1 if nothing else fits. Of 1-D codes it reads at most eight in one
/// picture. Reading may throw std::exception.
Decoder zxing(Symbologies symbologies, Effort effort);

}  // namespace nivlo
