// The clock monitor, and the search for midnight.
#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>

#include "linux/desktop/clock/ClockMonitor.hpp"
#include "linux/desktop/clock/LocalMidnight.hpp"
#include "linux/handles/Descriptor.hpp"
#include "platform/Foundation/NSNotificationCenter.hpp"
#include "platform/Foundation/NSString+Format.hpp"
#include "platform/UIKit/UIApplication.hpp"
#include "tests/support/Environment.hpp"
#include "tests/support/LoopUntil.hpp"
#include "tests/support/TemporaryDirectory.hpp"

namespace nivlo {
namespace {

using namespace std::chrono_literals;

constexpr std::time_t kDay = 24 * 60 * 60;

timespec now() {
  timespec time{};
  clock_gettime(CLOCK_REALTIME, &time);
  return time;
}

/// The time of day, in UTC.
std::time_t at(std::chrono::sys_days day, std::chrono::seconds time) {
  return std::chrono::system_clock::to_time_t(day + time);
}

/// A zone, as TZ has it, whose next midnight comes this many seconds after the time.
std::string zoneWithMidnightIn(std::time_t seconds, std::time_t time) {
  const auto offset = static_cast<int>((time + seconds) % kDay);
  return stringWithFormat("MID%02d:%02d:%02d", offset / 3600, offset / 60 % 60, offset % 60);
}

class ClockMonitorTest : public testing::Test {
 protected:
  ClockMonitorTest() {
    // Every process notices that the clock is set, so these tests take turns.
    EXPECT_EQ(flock(turn_.get(), LOCK_EX), 0);
    NSNotificationCenter::defaultCenter().addObserver(
        observer_, [this](const NSNotification&) { ++changes_; },
        UIApplicationSignificantTimeChangeNotification);
    link("Europe/Paris");
  }
  /// Has the C library forget the last zone.
  ~ClockMonitorTest() override { tzset(); }

  /// Replaces the zone file by a link to the zone, as timedatectl does.
  void link(const std::string& zone) {
    const auto fresh = directory_.path() / "fresh";
    std::ofstream(directory_.path() / std::filesystem::path(zone).filename()) << "rules of " << zone;
    std::filesystem::create_symlink(directory_.path() / std::filesystem::path(zone).filename(), fresh);
    std::filesystem::rename(fresh, zoneFile_);
  }

  Descriptor turn_{open("/proc/self/exe", O_RDONLY | O_CLOEXEC)};
  int changes_ = 0;
  test::TemporaryDirectory directory_;
  std::filesystem::path zoneFile_ = directory_.path() / "localtime";
  std::shared_ptr<int> observer_ = std::make_shared<int>();
};

TEST_F(ClockMonitorTest, MissesThatTheClockIsSet) {
  const auto monitor = makeClockMonitor(zoneFile_);
  const auto same = now();
  if (clock_settime(CLOCK_REALTIME, &same) != 0) {
    GTEST_SKIP() << "setting the clock, even to its own time, needs CAP_SYS_TIME";
  }
  EXPECT_TRUE(test::loopUntil([&] { return changes_ > 0; }));
}

TEST_F(ClockMonitorTest, MissesAChangeOfTheTimeZoneOrSeesOneTooMany) {
  const auto monitor = makeClockMonitor(zoneFile_);
  link("Asia/Tokyo");
  EXPECT_TRUE(test::loopUntil([&] { return changes_ == 1; }))
      << "missed a link that was renamed over the old one";
  std::filesystem::remove(zoneFile_);
  std::ofstream(zoneFile_) << "rules of the country";
  EXPECT_TRUE(test::loopUntil([&] { return changes_ == 2; }))
      << "missed a file that was removed and written again";
  const auto same = directory_.path() / "same";
  std::filesystem::copy_file(zoneFile_, same);
  std::filesystem::rename(same, zoneFile_);
  link("America/New_York");
  EXPECT_TRUE(test::loopUntil([&] { return changes_ >= 3; }));
  EXPECT_EQ(changes_, 3) << "an unchanged file counted as a change";
}

TEST_F(ClockMonitorTest, MissesMidnightOrKeepsThatOfTheOldZone) {
  test::ScopedEnvironment zone({{"TZ", zoneWithMidnightIn(kDay / 2, now().tv_sec)}});
  const auto monitor = makeClockMonitor(zoneFile_);
  const auto start = now().tv_sec;
  const test::ScopedEnvironment other({{"TZ", zoneWithMidnightIn(2, start)}});
  link("Asia/Tokyo");
  EXPECT_TRUE(test::loopUntil([&] { return changes_ == 1; }));
  EXPECT_TRUE(test::loopUntil([&] { return changes_ == 2; })) << "the timer still waits for the old midnight";
  EXPECT_GE(now().tv_sec, start + 2);
  EXPECT_TRUE(test::loopUntil([&] { return now().tv_sec >= start + 3; }));
  EXPECT_EQ(changes_, 2);
}

TEST(LocalMidnight, IsWrongWhereTheClockGoesForwardOrBackOverIt) {
  const struct {
    const char* zone;
    std::time_t now, midnight;
  } cases[] = {
      {"UTC0", at(2024y / 2 / 28, 0h), at(2024y / 2 / 29, 0h)},
      {"UTC0", at(2024y / 12 / 31, 23h + 59min + 59s), at(2025y / 1 / 1, 0h)},
      {"JST-9", at(2024y / 6 / 1, 15h), at(2024y / 6 / 2, 15h)},
      // In this zone, clocks go from 0:00 to 1:00 on 10 March 2024, and from 1:00 back to 0:00 on 3 November.
      {"HAV5HDT,M3.2.0/0,M11.1.0/1", at(2024y / 3 / 10, 4h + 30min), at(2024y / 3 / 10, 5h)},
      {"HAV5HDT,M3.2.0/0,M11.1.0/1", at(2024y / 11 / 3, 4h), at(2024y / 11 / 4, 5h)},
  };
  for (const auto& [name, time, midnight] : cases) {
    SCOPED_TRACE(name);
    const test::ScopedEnvironment zone({{"TZ", std::string(name)}});
    tzset();
    EXPECT_EQ(nextLocalMidnight(time), midnight);
  }
}

}  // namespace
}  // namespace nivlo
