// Environment variables for tests and their children.
#pragma once

#include <map>
#include <optional>
#include <string>

namespace nivlo::test {

/// Changes to an environment: a variable to set, or, with no value, one to remove.
using Environment = std::map<std::string, std::optional<std::string>>;

/// `first` with the changes of `second` on top.
Environment merged(Environment first, const Environment& second);

/// Applies changes to this process while it lives, and restores the earlier values afterwards. To be created
/// and destroyed while no other thread looks at the environment.
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
