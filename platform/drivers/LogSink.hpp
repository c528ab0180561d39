// The driver that takes the lines of the system log.
#pragma once

#include <string_view>

namespace nivlo {

/// The system log. Callable from any thread, and from several at once.
class LogSink {
 public:
  virtual ~LogSink() = default;

  /// Writes one line. `message` does not end in a line end, but may contain some. `format` is what the
  /// message was made from: all lines of one kind have the same format, which lets a sink limit how often
  /// they are written.
  virtual void write(std::string_view format, std::string_view message) = 0;
};

}  // namespace nivlo
