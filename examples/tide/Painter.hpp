// Draws the sea over and over, on a thread of its own.
#pragma once

#include "Sea.hpp"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace tide {

/// Gives each picture to `show`, on the painter's own thread. At rest it uses no processor time at all. All
/// operations may be called from any thread.
class Painter {
 public:
  using Show = std::function<void(nivlo::VideoFramePtr)>;

  Painter(nivlo::CGSize size, Show show);

  /// Enough for waves that roll slowly; each picture costs power.
  static constexpr std::chrono::milliseconds kInterval{100};

  void setRunning(bool running);
  /// Shows this hour, or the one on the clock when there is none.
  void setHour(std::optional<double> hour);
  void setDim(bool isDim);

 private:
  void run(const std::stop_token& stop);

  Sea sea_;  // used by the thread alone
  const Show show_;
  std::mutex mutex_;
  std::condition_variable_any changed_;
  bool running_ = false;
  std::optional<double> hour_;
  bool isDim_ = false;
  std::jthread thread_;  // last: it uses all of the above
};

}  // namespace tide
