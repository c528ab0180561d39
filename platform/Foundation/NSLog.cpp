#include "platform/Foundation/NSLog.hpp"

#include <cstdio>

#include "platform/drivers/Drivers.hpp"

namespace nivlo {

void writeToLog(std::string_view format, std::string_view message) {
  if (message.ends_with('\n')) {
    message.remove_suffix(message.ends_with("\r\n") ? 2 : 1);
  }
  if (auto& sink = drivers().logSink) {
    sink->write(format, message);
    return;
  }
  const std::string line = std::string(message) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace nivlo
