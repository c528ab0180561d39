// The output that a surface waits for while none shows it.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace nivlo {

/// Keeps track of whether the wanted output is there, and logs once whenever it begins to be missed. Main
/// thread only.
class AwaitedOutput {
 public:
  /// Takes the name of the wanted output; empty if any will do.
  explicit AwaitedOutput(std::string name) : name_(std::move(name)) {}

  /// Must be called whenever outputs have come or gone, with the names of all that are there.
  void update(bool isThere, const std::vector<std::string>& names);
  /// Names the missing output to users: "the output eDP-1". Empty if none is missing.
  const std::string& text() const { return text_; }

 private:
  std::string name_;
  std::string text_;
};

}  // namespace nivlo
