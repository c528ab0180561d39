#include "host/log/ConsoleLog.hpp"

#include <chrono>
#include <cstdio>
#include <string>

#include <fmt/chrono.h>
#include <unistd.h>

#include "host/text/VisibleText.hpp"

namespace nivlo {

namespace {

class ConsoleLog : public LogSink {
 public:
  void write(std::string_view, std::string_view message) override {
    const auto now = std::chrono::system_clock::now();
    const auto milliseconds =
        std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
    const auto line = fmt::format("{:%H:%M:%S}.{:03} nivlo[{}] {}\n",
                                  fmt::localtime(std::chrono::system_clock::to_time_t(now)), milliseconds,
                                  getpid(), visibleText(message));
    // One call for the whole line: standard error is unbuffered, and lines of several threads must not mix.
    std::fwrite(line.data(), 1, line.size(), stderr);
  }
};

}  // namespace

std::unique_ptr<LogSink> makeConsoleLog() { return std::make_unique<ConsoleLog>(); }

}  // namespace nivlo
