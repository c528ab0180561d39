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

/// Runs `nivlo` as on a machine without PipeWire, message buses and displays, but for those that
/// `environment` names. Where it names no display, the wallpaper is drawn into memory unless it takes
/// NIVLO_WITHOUT_DISPLAY away.
class Nivlo : public ChildProcess {
 public:
  explicit Nivlo(const std::vector<std::string>& arguments, const Environment& environment = {});

  /// The folder of its log files.
  std::filesystem::path logDirectory() const { return state_->path() / "nivlo" / "Logs"; }

  /// Waits for a line of a dialog in the terminal, then presses this button. Returns false if the line does
  /// not come.
  bool answer(std::string_view line, int button);

 private:
  Nivlo(const std::vector<std::string>& arguments, const Environment& environment,
        std::shared_ptr<TemporaryDirectory> state);

  std::shared_ptr<TemporaryDirectory> state_;
};

/// Writes a PNG file of 1280x720 pixels with a code in the middle.
void writeCodePicture(const std::filesystem::path& path, const std::string& format, const std::string& text,
                      Picture::Color background = {255, 255, 255});

}  // namespace nivlo::test
