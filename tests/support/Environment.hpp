// Environment variables for tests and their children.
#pragma once

#include <map>
#include <optional>
#include <string>

namespace nivlo::test {

/// Changes to an environment: a variable and its new value, or no value to remove the variable.
using Environment = std::map<std::string, std::optional<std::string>>;

/// Returns the changes of both; where they differ, `second` wins.
Environment merged(Environment first, const Environment& second);

/// Applies changes to this process's environment until it is destroyed, which restores the previous values.
/// Create and destroy it while no other thread uses the environment.
class ScopedEnvironment {
 public:
  explicit ScopedEnvironment(const Environment& changes);
  ~ScopedEnvironment();
  ScopedEnvironment(const ScopedEnvironment&) = delete;
  ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

 private:
  Environment earlier_;
};

}  // namespace nivlo::test
