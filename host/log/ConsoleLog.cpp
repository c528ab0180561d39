#include "host/log/ConsoleLog.hpp"

#include <chrono>
#include <mutex>
#include <string>

#include <fmt/chrono.h>
#include <unistd.h>

#include "host/text/VisibleText.hpp"

namespace nivlo {

namespace {

constexpr unsigned long kLinesOfARun = 3;
/// A line of this format may hold anything, so two of them in a row are not a run.
constexpr std::string_view kAnyLine = "%@";

class ConsoleLog : public LogSink {
 public:
  explicit ConsoleLog(std::FILE* stream) : stream_(stream), collapses_(isatty(fileno(stream)) == 0) {}
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
    const auto line = fmt::format("{:%H:%M:%S}.{:03} nivlo[{}] {}\n",
                                  fmt::localtime(std::chrono::system_clock::to_time_t(seconds)), milliseconds,
                                  getpid(), visibleText(message));
    std::fwrite(line.data(), 1, line.size(), stream_);
    std::fflush(stream_);
  }

  std::FILE* stream_;
  bool collapses_;
  std::mutex mutex_;
  std::string format_;
  unsigned long run_ = 0;
};

}  // namespace

std::unique_ptr<LogSink> makeConsoleLog(std::FILE* stream) { return std::make_unique<ConsoleLog>(stream); }

}  // namespace nivlo
