// The one place that calls ZBar.
#pragma once

#include "linux/codes/Decoder.hpp"

namespace nivlo {

/// A second opinion: ZBar reads some QR codes on cloth and blurred 1-D codes that ZXing does not, and is
/// wrong about others. Texts that are not plain ASCII are left out, as it guesses their character set.
Decoder zbarQRCodes();

/// For a picture that shows little else than upright bars: where on it they are is not known, so its corners
/// are their outline.
Decoder zbarBars();

}  // namespace nivlo
