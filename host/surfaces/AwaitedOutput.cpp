#include "host/surfaces/AwaitedOutput.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

void AwaitedOutput::update(bool isThere, const std::vector<std::string>& names) {
  if (isThere) {
    text_.clear();
  } else if (text_.empty()) {
    text_ = name_.empty() ? "an output" : "the output " + name_;
    NSLog("surface: waiting for %@ with the camera closed; %@", text_,
          names.empty() ? "there is no output now"
                        : fmt::format("the outputs now are: {}", fmt::join(names, ", ")));
  }
}

}  // namespace nivlo
