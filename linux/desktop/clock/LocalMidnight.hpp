// When the next day begins.
#pragma once

#include <ctime>

namespace nivlo {

/// The first second after `now` whose local date is another one. That is midnight, except where the clock
/// goes forward over it. In the time zone that tzset() has read last.
std::time_t nextLocalMidnight(std::time_t now);

}  // namespace nivlo
