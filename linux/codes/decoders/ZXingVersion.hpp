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

/// ZXing 2 drops a matrix code without text, whatever its options say.
inline constexpr bool kReadsEmptyCodes = false;

#else

using ZXingOptions = ZXing::DecodeHints;

inline ZXingOptions plainOptions() { return {}; }

inline constexpr bool kReadsEmptyCodes = true;

#endif

}  // namespace nivlo
