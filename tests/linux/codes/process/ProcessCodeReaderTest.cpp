#include <climits>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <thread>

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <zint.h>

#include "linux/codes/process/ProcessCodeReader.hpp"
#include "tests/fakes/RecordingLog.hpp"
#include "tests/linux/codes/CodePictures.hpp"
#include "tests/support/TemporaryDirectory.hpp"
#include "tests/support/WaitFor.hpp"

namespace nivlo::test {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::IsEmpty;
using Clock = std::chrono::steady_clock;

/// The process ID of the only child of this process, or 0 if there is none.
pid_t readerPid() {
  for (const auto& process : fs::directory_iterator("/proc")) {
    std::ifstream file(process.path() / "stat");
    std::string pid, name, state;
    pid_t parent = 0;
    if (file >> pid >> name >> state >> parent && parent == getpid() && state != "Z") {
      return std::stoi(pid);
    }
  }
  return 0;
}

std::ptrdiff_t openDescriptors() {
  return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}

int residentPages() {
  int size = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> size >> resident;
  return resident;
}

class ProcessCodeReaderTest : public testing::Test {
 protected:
  bool reads(CodeReader& reader) {
    return waitFor([&] { return !reader.look(code_).empty(); });
  }

  LoggingMachine machine_;
  TemporaryDirectory directory_;
  VideoFrame code_ = frameOf(drawCode(BARCODE_QRCODE, "still here"), PixelFormat::NV12, 5);
};

TEST_F(ProcessCodeReaderTest, EveryFaultEndsTheProcessIsLoggedOnceAndYieldsNoCodes) {
  std::vector<std::pair<std::string, std::string>> faults = {{"aborts", "killed by signal 6"},
                                                             {"opens", "killed by signal 31"},
                                                             {"connects", "killed by signal 31"},
                                                             {"forks", "killed by signal 31"},
                                                             {"hangs", "within 50 ms"},
                                                             {"babbles", "sent an invalid reply"},
                                                             {"floods", "sent an invalid reply"},
                                                             {"writes", "sent an invalid reply"},
                                                             {"shrinks", "sent an invalid reply"},
                                                             {"inherits", "sent an invalid reply"},
                                                             {"keeps-privileges", "(prctl)"},
                                                             {"keeps-limits", "(setrlimit)"},
                                                             {"keeps-calls", "(seccomp)"}};
  // Sanitizer builds have no limit on memory.
  if (!kSanitized) {
    faults.emplace_back("hoards", "killed by signal 6");
  }
  for (const auto& [fault, cause] : faults) {
    const auto before = machine_.log.lines().size();
    fs::create_symlink(NIVLO_TEST_READER, directory_.path() / fault);
    const std::chrono::milliseconds deadline = fault == "hangs" ? 50ms : kPatience;
    const auto driver = makeProcessCodeReaderDriver(deadline, directory_.path() / fault);
    const auto reader = driver->makeReader();
    EXPECT_TRUE(driver->canRead());
    for (int look = 0; look < 20; ++look) {
      EXPECT_THAT(reader->look(code_), IsEmpty());
    }
    EXPECT_FALSE(driver->canRead());
    ASSERT_EQ(machine_.log.lines().size(), before + 1) << fault;
    EXPECT_THAT(machine_.log.lines().back(), HasSubstr(cause)) << fault;
  }
  const auto missing = makeProcessCodeReaderDriver(kLiveDeadline, directory_.path() / "missing");
  EXPECT_EQ(missing->makeReader(), nullptr);
  EXPECT_EQ(missing->makeReader(), nullptr);
  EXPECT_EQ(machine_.log.count("missing"), 1);
  EXPECT_FALSE(missing->canRead());
}

TEST_F(ProcessCodeReaderTest, AProcessThatIsKilledOrStoppedIsRestartedAndLeaksNothing) {
  const auto driver = makeProcessCodeReaderDriver();
  auto reader = driver->makeReader();
  ASSERT_TRUE(reads(*reader));
  const auto descriptors = openDescriptors();
  const auto pages = residentPages();
  std::mt19937 random(1);
  for (int frame = 0; frame < 1000; ++frame) {
    std::jthread killer;
    if (frame % 250 == 100) {
      ASSERT_TRUE(reads(*reader)) << frame;
      killer = std::jthread([pid = readerPid(), delay = random() % 5000, stop = frame == 350] {
        std::this_thread::sleep_for(std::chrono::microseconds(delay));
        kill(pid, stop ? SIGSTOP : SIGKILL);
      });
    }
    const auto start = Clock::now();
    reader->look(code_);
    EXPECT_LT(Clock::now() - start, kLiveDeadline + 500ms);
  }
  EXPECT_TRUE(reads(*reader));
  EXPECT_TRUE(driver->canRead()) << "after failures";
  EXPECT_EQ(machine_.log.count("codes: nivlo-reader"), 1);
  EXPECT_EQ(openDescriptors(), descriptors);
  EXPECT_LT(residentPages(), pages + 2048);
  reader.reset();
  EXPECT_EQ(readerPid(), 0);
}

TEST_F(ProcessCodeReaderTest, TheCurrentFolderHasNoPartInStartingTheProcess) {
  const auto program = directory_.path() / "reader", place = directory_.path() / "place";
  std::ofstream(program) << "#!/bin/sh\npwd > " << place.string() << '\n';
  fs::permissions(program, fs::perms::owner_all);
  makeProcessCodeReaderDriver(kPatience, program)->makeReader()->look(code_);
  std::string folder;
  std::ifstream(place) >> folder;
  EXPECT_EQ(folder, "/");
}

TEST_F(ProcessCodeReaderTest, TheReadersNicenessIsFiveOrThatOfTheProgramIfThatIsHigher) {
  for (const int niceness : {0, 10}) {
    // A thread has a niceness of its own, which the processes that it starts inherit.
    std::thread([&] {
      setpriority(PRIO_PROCESS, 0, niceness);
      const auto reader = makeProcessCodeReaderDriver()->makeReader();
      EXPECT_TRUE(reads(*reader));
      EXPECT_EQ(getpriority(PRIO_PROCESS, readerPid()), std::max(5, getpriority(PRIO_PROCESS, 0)));
    }).join();
  }
  EXPECT_EQ(machine_.log.count("codes: nivlo-reader"), 0);
}

TEST_F(ProcessCodeReaderTest, PicturesOfAbsurdSizesAreRefusedBeforeAProcessIsStarted) {
  const auto reader = makeProcessCodeReaderDriver()->makeReader();
  const int sizes[][3] = {
      {8193, 8192, 8193}, {INT_MAX, 1, INT_MAX}, {1, INT_MAX, 1}, {1 << 20, 1 << 20, 1 << 20},
      {0, 10, 10},        {10, -1, 10},          {10, 10, 9},     {10, 10, INT_MAX}};
  for (const auto& [width, height, stride] : sizes) {
    VideoFrame frame = code_;
    frame.width = width;
    frame.height = height;
    frame.planes[0].stride = stride;
    EXPECT_THAT(reader->look(frame), IsEmpty());
  }
  EXPECT_EQ(readerPid(), 0);
  EXPECT_EQ(machine_.log.count("too large"), 1);
}

TEST_F(ProcessCodeReaderTest, APictureFullOfFinderPatternsKeepsTheDeadlineAndLaterOnesAreRead) {
  const auto reader = makeProcessCodeReaderDriver()->makeReader();
  GreyPicture scene = greyPicture(1280, 720, 255);
  for (int i = 0; i < 1280 * 720; ++i) {
    const int ring = std::max(std::abs(i % 1280 / 2 % 8 - 3), std::abs(i / 1280 / 2 % 8 - 3));
    if (ring == 3 || ring < 2) {
      scene.pixels[i] = 0;
    }
  }
  const auto start = Clock::now();
  reader->look(frameOf(scene));
  EXPECT_LT(Clock::now() - start, kLiveDeadline + 500ms);
  EXPECT_TRUE(reads(*reader));
}

}  // namespace

}  // namespace nivlo::test
