#include "tests/kit/mflog/LogTest.hpp"

namespace nivlo {
namespace {

using testing::EndsWith;
using testing::StartsWith;

namespace fs = std::filesystem;

class LogInTrouble : public LogTest {};

TEST_F(LogInTrouble, IsSilentAboutAFullDeviceOrNeverWritesAgain) {
  fs::create_directories(logs);
  fs::create_symlink("/dev/full", logs / "log.txt");
  const auto logger = MFLoggerImpl::init(logs);
  EXPECT_TRUE(wasEchoed("Writedata exception NSFileHandleOperationException write: No space left on device"));
  const auto reports = machine.log.lines().size();
  logger->writeMessage("lost", 4);
  EXPECT_GT(machine.log.lines().size(), reports + 1);
  fs::remove(logs / "log.txt");
  logger->writeMessage("kept", 4);
  EXPECT_THAT(text(), EndsWith("[main] kept\r\n"));
}

TEST_F(LogInTrouble, LosesALineWhenTheFileIsDeletedMovedOrEmptied) {
  const auto logger = MFLoggerImpl::init(logs);
  fs::remove_all(logs);
  logger->writeMessage("after deletion", 4);
  EXPECT_THAT(text(), StartsWith(kHeader + "<W>"));
  EXPECT_THAT(text(), EndsWith("after deletion\r\n"));

  fs::rename(logs / "log.txt", logs / "moved.txt");
  fill("log.txt", 3);
  logger->writeMessage("after the move", 4);
  EXPECT_THAT(text(), StartsWith("xxx<W>"));
  EXPECT_THAT(text("moved.txt"), EndsWith("after deletion\r\n"));

  fs::resize_file(logs / "log.txt", 0);
  logger->writeMessage("after emptying", 4);
  EXPECT_THAT(text(), StartsWith(kHeader + "<W>"));
}

TEST_F(LogInTrouble, LosesTheOlderGenerationWhenTwoProgramsReachTheThreshold) {
  fill("log.txt", kThreshold);
  const auto first = MFLoggerImpl::init(logs), second = MFLoggerImpl::init(logs);
  first->writeMessage("rolls", 4);
  second->writeMessage("joins in", 4);
  EXPECT_GT(fs::file_size(logs / "log.txt.bak"), kThreshold);
  EXPECT_THAT(text(), EndsWith("joins in\r\n"));
  EXPECT_THAT(text(), StartsWith(kHeader));
}

}  // namespace
}  // namespace nivlo
