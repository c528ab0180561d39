// Whether this is a build for finding faults.
#pragma once

namespace nivlo {

/// The sanitizers' own code reads files, maps terabytes and is slow, so the reader's process cannot be held
/// as tightly there as in the program that users run.
#ifdef NIVLO_SANITIZED
inline constexpr bool kSanitized = true;
#else
inline constexpr bool kSanitized = false;
#endif

}  // namespace nivlo
