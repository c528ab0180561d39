#include <array>
#include <future>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include "host/log/ConsoleLog.hpp"
#include "linux/handles/Descriptor.hpp"
#include "tests/support/WaitFor.hpp"

namespace nivlo::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

TEST(ConsoleLog, WaitsForAReaderThatDoesNotReadOrHidesWhatWasLost) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
  const Descriptor reader(ends[0]), writer(ends[1]);
  const int room = fcntl(writer.get(), F_GETPIPE_SZ);
  const auto readAll = [&] {
    std::string text(room, '\0');
    text.resize(std::max<ssize_t>(0, read(reader.get(), text.data(), text.size())));
    return text;
  };
  const auto log = makeConsoleLog(writer.get());
  auto writing = std::async(std::launch::async, [&] {
    for (int i = 0; i < 100; ++i) {
      log->write("%@", std::string(i % 2 == 0 ? 900 : 9000, 'x'));
    }
  });
  const bool waited = writing.wait_for(kPatience) != std::future_status::ready;
  while (writing.wait_for(std::chrono::milliseconds(10)) != std::future_status::ready) {
    readAll();
  }
  ASSERT_FALSE(waited);
  readAll();
  log->write("%@", "afterwards");
  const auto text = readAll();
  EXPECT_THAT(text, HasSubstr(" lines lost: nobody read)\n"));
  EXPECT_THAT(text, EndsWith("] afterwards\n"));
}

}  // namespace
}  // namespace nivlo::test
