#include "linux/desktop/clock/DayTimer.hpp"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <utility>

#include <glib-unix.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include "linux/desktop/clock/LocalMidnight.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

/// Does not use time(), which reads a coarser clock that may still show the previous day when the timer
/// expires.
std::time_t now() {
  timespec time{};
  clock_gettime(CLOCK_REALTIME, &time);
  return time.tv_sec;
}

}  // namespace

DayTimer::DayTimer(std::function<void()> changed)
    : changed_(std::move(changed)), descriptor_(timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC)) {
  if (descriptor_.get() < 0) {
    NSLog(
        "clock: cannot notice the beginning of a day: %@; raise the limit on open files and start "
        "Nivlo again",
        std::strerror(errno));
    return;
  }
  const auto ready = [](gint, GIOCondition, gpointer data) -> gboolean {
    static_cast<DayTimer*>(data)->expired();
    return G_SOURCE_CONTINUE;
  };
  source_.reset(g_unix_fd_source_new(descriptor_.get(), G_IO_IN));
  g_source_set_callback(source_.get(), G_SOURCE_FUNC(static_cast<GUnixFDSourceFunc>(ready)), this, nullptr);
  g_source_attach(source_.get(), nullptr);
  arm();
}

void DayTimer::arm() {
  tzset();
  int result = 0;
  do {
    const itimerspec midnight{{}, {nextLocalMidnight(now()), 0}};
    result =
        timerfd_settime(descriptor_.get(), TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &midnight, nullptr);
  } while (result < 0 && errno == ECANCELED);  // The clock was set at this very moment.
}

void DayTimer::expired() {
  std::uint64_t times = 0;
  const bool rang = read(descriptor_.get(), &times, sizeof times) == sizeof times;
  if (rang || errno == ECANCELED) {
    arm();
    changed_();
  }
}

}  // namespace nivlo
