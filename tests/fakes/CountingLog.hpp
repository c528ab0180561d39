// A log that only counts.
#pragma once

#include <atomic>

#include "platform/drivers/LogSink.hpp"

namespace nivlo::test {

/// Adds each line to a counter, which must outlive it.
class CountingLog final : public LogSink {
 public:
  explicit CountingLog(std::atomic<int>& lines) : lines_(lines) {}
  void write(std::string_view, std::string_view) override { ++lines_; }

 private:
  std::atomic<int>& lines_;
};

}  // namespace nivlo::test
