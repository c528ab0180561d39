// A system log that tests can read.
#pragma once

#include <algorithm>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/drivers/Drivers.hpp"

namespace nivlo {

/// Records the message of every line. Callable from any thread.
class RecordingLog : public LogSink {
 public:
  void write(std::string_view, std::string_view message) override {
    const std::lock_guard lock(mutex_);
    lines_.emplace_back(message);
  }
  std::vector<std::string> lines() const {
    const std::lock_guard lock(mutex_);
    return lines_;
  }
  /// Returns how many of the lines contain `text`; without it, how many lines there are.
  int count(std::string_view text = {}) const {
    const auto all = lines();
    return static_cast<int>(
        std::ranges::count_if(all, [&](const auto& line) { return line.find(text) != line.npos; }));
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

/// Installs no driver but a log, until it is destroyed.
class LoggingMachine {
  std::unique_ptr<RecordingLog> made_ = std::make_unique<RecordingLog>();

 public:
  RecordingLog& log = *made_;

  LoggingMachine() {
    Drivers withLog;
    withLog.logSink = std::move(made_);
    installDrivers(std::move(withLog));
  }
  ~LoggingMachine() { installDrivers({}); }
};

}  // namespace nivlo
