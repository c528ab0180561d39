#include <ctime>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "kit/MFLog/MFLog.hpp"
#include "platform/Foundation/NSThread.hpp"
#include "platform/UIKit/UIApplication.hpp"
#include "tests/kit/mflog/LogTest.hpp"
#include "tests/support/Environment.hpp"

namespace nivlo {
namespace {

using testing::EndsWith;
using testing::StartsWith;

using LogFile = LogTest;

std::time_t localTime(int month, int day, int hour) {
  std::tm date{
      .tm_sec = 22, .tm_min = 3, .tm_hour = hour, .tm_mday = day, .tm_mon = month - 1, .tm_year = 114};
  date.tm_isdst = -1;
  return std::mktime(&date);
}

TEST_F(LogFile, LacksItsHeaderOrABannerOrHasOneTooMany) {
  const auto clock = [] { return localTime(3, 5, 14); };
  MFLoggerImpl::init(logs, clock)->writeMessage("camera failed", 3);
  const std::string line = "<E> Mar 05 14:03:22 [main] camera failed";
  EXPECT_EQ(text(), kHeader + kBanner + line + "\r\n");
  EXPECT_THAT(machine.log.lines(), testing::ElementsAre(line));
  MFLoggerImpl::init(logs, clock);
  EXPECT_EQ(text(), kHeader + kBanner + line + "\r\n" + kBanner);

  fill("log.txt", 0);
  MFLoggerImpl::init(logs, clock)->writeMessage("camera failed", 3);
  EXPECT_EQ(text(), kBanner + line + "\r\n");
}

TEST_F(LogFile, IsRolledTooEarlyOrTooLate) {
  const auto clock = [] { return localTime(3, 5, 14); };
  const std::string stamp = "<I> Mar 05 14:03:22 [main] ";
  const std::size_t beforeLine = kThreshold - kBanner.size() - (stamp + "a\r\n").size();
  fill("log.txt.bak", 10);
  fill("log.txt", beforeLine - 1);
  auto logger = MFLoggerImpl::init(logs, clock);
  logger->setMaxFileSize(100);
  logger->writeMessage("a", 6);
  logger->writeMessage("b", 6);
  EXPECT_THAT(text(), EndsWith(stamp + "a\r\n" + stamp + "b\r\n"));
  EXPECT_EQ(text("log.txt.bak").size(), 10U);

  fill("log.txt", beforeLine);
  logger = MFLoggerImpl::init(logs, clock);
  logger->writeMessage("a", 6);
  EXPECT_EQ(text().size(), kThreshold);
  logger->writeMessage("b", 6);
  logger->writeMessage("c", 6);
  EXPECT_EQ(text(), kHeader + stamp + "b\r\n" + stamp + "c\r\n");
  EXPECT_EQ(text("log.txt.bak").size(), kThreshold);
}

TEST_F(LogFile, IsReadableForOthers) {
  using std::filesystem::perms;
  const auto permissionsOf = [](const std::filesystem::path& path) {
    return std::filesystem::status(path).permissions();
  };
  const auto logger = MFLoggerImpl::init(logs);
  EXPECT_EQ(permissionsOf(logs), perms::owner_all);
  EXPECT_EQ(permissionsOf(logs / "log.txt"), perms::owner_read | perms::owner_write);
  logger->writeMessage(std::string(kThreshold, 'x'), 4);
  logger->writeMessage("rolls", 4);
  EXPECT_EQ(permissionsOf(logs / "log.txt"), perms::owner_read | perms::owner_write);
}

TEST_F(LogFile, ChangesItsMonthWithoutANotification) {
  std::time_t now = localTime(3, 31, 23);
  const auto logger = MFLoggerImpl::init(logs, [&now] { return now; });
  now = localTime(4, 1, 0);
  EXPECT_EQ(logger->currentTime(), "Mar 01 00:03:22");
  NSNotificationCenter::defaultCenter().postNotificationName(UIApplicationSignificantTimeChangeNotification);
  EXPECT_EQ(logger->currentTime(), "Apr 01 00:03:22");
  now = localTime(12, 9, 8);
  NSNotificationCenter::defaultCenter().postNotificationName(UIApplicationDidBecomeActiveNotification);
  EXPECT_EQ(logger->currentTime(), "Dec 09 08:03:22");
}

TEST_F(LogFile, MislabelsALinesThread) {
  const auto logger = MFLoggerImpl::init(logs);
  const std::vector<std::pair<std::optional<std::string>, std::string>> labels{
      {std::nullopt, "null"}, {"", ""}, {"abc", "abc"}, {"worker-1", "work"}, {"äöü漢字", "äöü漢"}};
  for (const auto& [name, label] : labels) {
    std::jthread([&, name = name] {
      NSThread::currentThread().setName(name);
      logger->writeMessage("here", 6);
    }).join();
    EXPECT_THAT(text(), EndsWith("[" + label + "] here\r\n"));
  }
}

TEST_F(LogFile, LosesOrTearsALineWhenEightThreadsLogThroughARoll) {
  constexpr int kThreads = 8, kLines = 400;
  fill("log.txt", kThreshold - 50'000);
  const auto logger = MFLoggerImpl::init(logs);
  std::vector<std::jthread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&, i] {
      for (int line = 0; line < kLines; ++line) {
        logger->writeMessage(stringWithFormat("thread %d line %d.", i, line), 5);
        logger->checkDate({});
        logger->setLogLevel(logger->logLevel() ^ 1U);
      }
    });
  }
  threads.clear();

  std::vector<int> next(kThreads, 0);
  std::istringstream lines(text("log.txt.bak") + text());
  for (std::string line; std::getline(lines, line);) {
    const auto message = line.find("[null] thread ");
    int thread = 0, number = 0, end = 0;
    if (message == std::string::npos) {
      continue;
    }
    ASSERT_EQ(std::sscanf(&line[message], "[null] thread %d line %d.\r%n", &thread, &number, &end), 2)
        << line;
    ASSERT_EQ(message + static_cast<std::size_t>(end), line.size()) << line;
    ASSERT_EQ(number, next.at(thread)++) << line;
  }
  EXPECT_THAT(next, testing::Each(kLines));
  EXPECT_THAT(text(), StartsWith(kHeader + "<N>"));
}

TEST_F(LogFile, LosesALevelOrATextOfTheLoggingFunctions) {
  const test::ScopedEnvironment environment({{"XDG_STATE_HOME", directory.path() / "home"}});
  EXPECT_EQ(MFLogFileDirectory(), directory.path() / "home/nivlo/Logs");
  EXPECT_TRUE(std::filesystem::exists(MFLogFileDirectory() / "log.txt"));
  for (const auto& [given, stored] : {std::pair{3UL, 3UL}, {8UL, 7UL}, {~0UL, 7UL}, {0UL, 0UL}}) {
    MFLogSetLevel(given);
    EXPECT_EQ(MFLoggerImpl::sharedInstance()->logLevel(), stored);
  }
  MFEmergency("%@", "m");
  MFAlert("%d", 7);
  MFCritical("50%%");
  MFError("é%@", std::string("n\0l", 3));
  MFWarning("w");
  MFNotice("n");
  MFInfo("i");
  MFDebug("d %@", "%@");
  std::istringstream file(directory.read(MFLogFileDirectory() / "log.txt"));
  std::string messages, line;
  while (std::getline(file, line)) {
    const auto label = line.find(" [main] ");
    messages += label == std::string::npos ? "" : line.substr(0, 3) + line.substr(label + 8);
  }
  using namespace std::string_literals;
  EXPECT_EQ(messages, "<M>m\r<A>7\r<C>50%\r<E>én\0l\r<W>w\r<N>n\r<I>i\r<D>d %@\r"s);
  EXPECT_THROW(MFLoggerImpl::sharedInstance()->writeMessage("", 8), std::out_of_range);
}

}  // namespace
}  // namespace nivlo
