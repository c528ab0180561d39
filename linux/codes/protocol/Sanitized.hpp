// Tells builds for a sanitizer from others.
#pragma once

namespace nivlo {

/// True in sanitizer builds. A sanitizer's runtime opens files, reserves terabytes of address space and is
/// slow, so there the reader's sandbox and deadline are looser than in the program that users run.
#ifdef NIVLO_SANITIZED
inline constexpr bool kSanitized = true;
#else
inline constexpr bool kSanitized = false;
#endif

}  // namespace nivlo
