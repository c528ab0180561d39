// A desktop that knows no layer shell: weston without a screen.
#pragma once

#include "tests/support/ChildProcess.hpp"
#include "tests/support/PrivateBus.hpp"

namespace nivlo::test {

/// Runs weston, with one output of 1280x720, in a private bus's session, from construction on. Throws
/// std::runtime_error, with what weston said, when it does not come up.
class HeadlessWeston {
 public:
  /// The bus must outlive it.
  explicit HeadlessWeston(PrivateBus& bus);

  /// What makes a child a client.
  Environment environment() const;

 private:
  PrivateBus& bus_;
  ChildProcess process_;
};

}  // namespace nivlo::test
