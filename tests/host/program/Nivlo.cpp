#include "tests/host/program/Nivlo.hpp"

#include <cstdlib>

#define ZX_USE_UTF8
#include <ZXing/BarcodeFormat.h>
#include <ZXing/BitMatrix.h>
#include <ZXing/CharacterSet.h>
#include <ZXing/MultiFormatWriter.h>

#include "linux/camera/ImageFile.hpp"

namespace nivlo::test {

namespace {

const Environment kBareMachine{{"XDG_RUNTIME_DIR", "/nonexistent"},
                               {"PIPEWIRE_REMOTE", std::nullopt},
                               {"DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent"},
                               {"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent"},
                               {"DISPLAY", std::nullopt},
                               {"WAYLAND_DISPLAY", std::nullopt},
                               {"NIVLO_WITHOUT_DISPLAY", "1"}};

std::vector<std::string> withProgram(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), NIVLO_PROGRAM);
  return arguments;
}

}  // namespace

Nivlo::Nivlo(const std::vector<std::string>& arguments, const Environment& environment)
    : Nivlo(arguments, environment, std::make_shared<TemporaryDirectory>()) {}

Nivlo::Nivlo(const std::vector<std::string>& arguments, const Environment& environment,
             std::shared_ptr<TemporaryDirectory> state)
    : ChildProcess(withProgram(arguments),
                   merged(merged(kBareMachine, {{"XDG_STATE_HOME", state->path()}}), environment)),
      state_(std::move(state)) {}

bool Nivlo::answer(std::string_view line, int button) {
  return waitForLine(line).has_value() && write(std::to_string(button) + "\n");
}

void writeCodePicture(const std::filesystem::path& path, const std::string& format, const std::string& text,
                      Picture::Color background) {
  constexpr int kWidth = 1280;
  constexpr int kHeight = 720;
  constexpr int kCodeEdge = 400;
  const auto code = ZXing::MultiFormatWriter(ZXing::BarcodeFormatFromString(format))
                        .setEncoding(ZXing::CharacterSet::UTF8)
                        .setMargin(8)
                        .encode(text, kCodeEdge, kCodeEdge);
  std::vector<std::uint8_t> pixels(kWidth * kHeight * 4);
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    pixels[i] = i % 4 == 3 ? 255 : background[2 - i % 4];
  }
  for (int y = 0; y < code.height(); ++y) {
    for (int x = 0; x < code.width(); ++x) {
      if (code.get(x, y)) {
        const int row = (kHeight - code.height()) / 2 + y;
        const int column = (kWidth - code.width()) / 2 + x;
        std::fill_n(pixels.begin() + (row * kWidth + column) * 4, 3, std::uint8_t{0});
      }
    }
  }
  writePNG(path, pixels.data(), kWidth, kHeight, kWidth * 4);
}

}  // namespace nivlo::test
