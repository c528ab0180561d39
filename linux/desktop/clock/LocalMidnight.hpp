// The time at which the next day begins.
#pragma once

#include <ctime>

namespace nivlo {

/// Returns the first second after `now` with another local date, in the time zone that tzset() read last.
/// The day begins at midnight, except where daylight saving time skips midnight.
std::time_t nextLocalMidnight(std::time_t now);

}  // namespace nivlo
