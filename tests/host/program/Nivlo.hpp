// The program under test.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/ChildProcess.hpp"
#include "tests/support/TemporaryDirectory.hpp"
#include "tests/support/pictures/Picture.hpp"

namespace nivlo::test {

/// `nivlo` with the arguments, on a machine without PipeWire, message buses and displays, unless the
/// environment has them.
class Nivlo : public ChildProcess {
 public:
  explicit Nivlo(const std::vector<std::string>& arguments, const Environment& environment = {});

  /// Where its log files are.
  std::filesystem::path logDirectory() const { return state_->path() / "nivlo" / "Logs"; }

  /// Waits until the line comes and answers the dialog that it belongs to. Returns whether it came.
  bool answer(std::string_view line, int button);

 private:
  Nivlo(const std::vector<std::string>& arguments, const Environment& environment,
        std::shared_ptr<TemporaryDirectory> state);

  std::shared_ptr<TemporaryDirectory> state_;
};

/// A picture file with one code, in the middle of a picture of 1280x720.
void writeCodePicture(const std::filesystem::path& path, const std::string& format, const std::string& text,
                      Picture::Color background = {255, 255, 255});

}  // namespace nivlo::test
