// Another program's window on a headless desktop.
#pragma once

#include <string>

#include "tests/support/ChildProcess.hpp"

namespace nivlo::test {

/// An opaque window of one colour with the title "foreign", on the screen for as long as this object lives.
/// sway tiles it; HeadlessSway::message("[title=foreign] fullscreen enable") makes it cover an output. The
/// constructor throws std::runtime_error, with the cause, if the window does not appear.
class ForeignWindow {
 public:
  /// `color` as "RRGGBB".
  explicit ForeignWindow(const Environment& environment, const std::string& color = "c02020")
      : process_({NIVLO_TEST_WINDOW, color}, environment) {
    process_.expectLine("mapped");
  }

 private:
  ChildProcess process_;
};

}  // namespace nivlo::test
