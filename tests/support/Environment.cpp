#include "tests/support/Environment.hpp"

#include <stdlib.h>

namespace nivlo::test {
namespace {

void apply(const Environment& changes) {
  for (const auto& [name, value] : changes) {
    if (value) {
      setenv(name.c_str(), value->c_str(), 1);
    } else {
      unsetenv(name.c_str());
    }
  }
}

}  // namespace

Environment merged(Environment first, const Environment& second) {
  for (const auto& [name, value] : second) {
    first[name] = value;
  }
  return first;
}

ScopedEnvironment::ScopedEnvironment(const Environment& changes) {
  for (const auto& [name, value] : changes) {
    const char* present = getenv(name.c_str());
    earlier_[name] = present != nullptr ? std::optional<std::string>(present) : std::nullopt;
  }
  apply(changes);
}

ScopedEnvironment::~ScopedEnvironment() { apply(earlier_); }

}  // namespace nivlo::test
