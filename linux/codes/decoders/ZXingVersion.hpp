// Everything about ZXing that depends on its version.
#pragma once

#define ZX_USE_UTF8
#include <ZXing/ReadBarcode.h>

namespace nivlo {

#if __has_include(<ZXing/ReaderOptions.h>)

using ZXingOptions = ZXing::ReaderOptions;

/// Returns options under which ZXing 2 reads as ZXing 1 does by default. By itself it replaces characters
/// that cannot be printed, and misreads more for the sake of codes that are inverted or extended, which the
/// reading strategies and Code39.hpp take care of.
inline ZXingOptions plainOptions() {
  ZXingOptions options;
  options.setTextMode(ZXing::TextMode::Plain);
  options.setTryInvert(false);
  options.setTryCode39ExtendedMode(false);
  return options;
}

/// Makes ZXing return matrix codes without text. ZXing 2 takes them for faulty, and so returns faulty ones
/// too.
inline void returnEmptyCodes(ZXingOptions& options) { options.setReturnErrors(true); }

#else

using ZXingOptions = ZXing::DecodeHints;

inline ZXingOptions plainOptions() { return {}; }

/// ZXing 1 returns them without being told.
inline void returnEmptyCodes(ZXingOptions&) {}

#endif

}  // namespace nivlo
