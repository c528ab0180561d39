// Where console lines go.
#pragma once

#include <string_view>

namespace nivlo {

class LogSink {
 public:
  virtual ~LogSink() = default;

  /// Writes one line; `message` holds no line end of its own at its end, but may hold others. `format` is the
  /// text the message was made from, the same for all lines of one kind. Callable from any thread, several at
  /// once.
  virtual void write(std::string_view format, std::string_view message) = 0;
};

}  // namespace nivlo
