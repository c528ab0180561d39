#include "host/log/ConsoleLog.hpp"

#include <chrono>
#include <climits>
#include <mutex>
#include <string>

#include <fmt/chrono.h>
#include <poll.h>
#include <unistd.h>

#include "host/text/VisibleText.hpp"

namespace nivlo {

namespace {

constexpr unsigned long kLinesOfARun = 3;
/// A line of this format may hold anything, so two of them in a row are not a run.
constexpr std::string_view kAnyLine = "%@";

/// Writes what fits without waiting: a pipe that nobody reads, or a terminal that was stopped, would stop the
/// main loop, and with it the picture. Returns whether all of it was written.
bool writeWithoutWaiting(int file, std::string_view text) {
  while (!text.empty()) {
    pollfd room{file, POLLOUT, 0};
    // A pipe is reported as writable only when it has room for PIPE_BUF bytes, so writing that many does not
    // block.
    const auto part = text.substr(0, PIPE_BUF);
    const auto written = poll(&room, 1, 0) == 1 ? ::write(file, part.data(), part.size()) : -1;
    if (written < 0) {
      return false;
    }
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

class ConsoleLog : public LogSink {
 public:
  explicit ConsoleLog(int file) : file_(file), collapses_(isatty(file) == 0) {}
  ~ConsoleLog() override { endRun(); }

  void write(std::string_view format, std::string_view message) override {
    const std::lock_guard lock(mutex_);
    if (format != format_ || format == kAnyLine) {
      endRun();
      format_ = format;
    }
    if (++run_ <= kLinesOfARun || !collapses_) {
      writeLine(message);
    }
  }

 private:
  void endRun() {
    if (collapses_ && run_ > kLinesOfARun) {
      writeLine(fmt::format("({} more lines like this)", run_ - kLinesOfARun));
    }
    run_ = 0;
  }

  void writeLine(std::string_view message) {
    const auto now = std::chrono::system_clock::now();
    const auto seconds = std::chrono::floor<std::chrono::seconds>(now);
    const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(now - seconds).count();
    const auto head =
        fmt::format("{:%H:%M:%S}.{:03} nivlo[{}]",
                    fmt::localtime(std::chrono::system_clock::to_time_t(seconds)), milliseconds, getpid());
    if (lost_ > 0 &&
        writeWithoutWaiting(file_, fmt::format("{} ({} lines lost: nobody read)\n", head, lost_))) {
      lost_ = 0;
    }
    if (lost_ > 0 || !writeWithoutWaiting(file_, fmt::format("{} {}\n", head, visibleText(message)))) {
      ++lost_;
    }
  }

  int file_;
  bool collapses_;
  std::mutex mutex_;
  std::string format_;
  unsigned long run_ = 0;
  unsigned long lost_ = 0;
};

}  // namespace

std::unique_ptr<LogSink> makeConsoleLog(int file) { return std::make_unique<ConsoleLog>(file); }

}  // namespace nivlo
