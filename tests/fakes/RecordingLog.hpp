// The system log as tests read it.
#pragma once

#include <algorithm>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/drivers/Drivers.hpp"

namespace nivlo {

/// Keeps every line; callable from any thread.
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
  /// How many of the lines hold the text.
  int count(std::string_view text = {}) const {
    const auto all = lines();
    return static_cast<int>(
        std::ranges::count_if(all, [&](const auto& line) { return line.find(text) != line.npos; }));
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

/// A machine that has nothing but a log, for as long as it lives.
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
