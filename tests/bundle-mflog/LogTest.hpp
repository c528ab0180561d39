// A logger in a directory of its own, on a machine of fakes.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <gmock/gmock.h>

#include "bundle/MFLog/MFLoggerImpl.hpp"
#include "platform/Foundation/NSBundle.hpp"
#include "tests/fakes/FakeMachine.hpp"
#include "tests/support/TemporaryDirectory.hpp"
#include "tests/support/WaitFor.hpp"

namespace nivlo {

inline const std::string kHeader = "# Application: Probe\r\n# Version: 1.5\r\n# Device: Desk\r\n# System: 12";
inline const std::string kBanner =
    "\r\n\r\n######################## Application(V1.5) launched ########################\r\n";
constexpr std::size_t kThreshold = 1'048'576;

class LogTest : public testing::Test {
 protected:
  struct Desk : DeviceIdentity {
    std::string machine() const override { return "x86_64"; }
    std::string model() const override { return "Desk"; }
    std::string systemVersion() const override { return "12"; }
  };

  LogTest() {
    drivers().device = std::make_unique<Desk>();
    NSBundle::setMainBundle({}, {{"CFBundleName", "Probe"}, {"CFBundleVersion", "1.5"}});
  }
  ~LogTest() override { NSBundle::setMainBundle({}, {}); }

  std::string text(const std::string& name = "log.txt") const {
    std::ifstream file(logs / name, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
  }
  void fill(const std::string& name, std::size_t bytes) const {
    std::filesystem::create_directories(logs);
    std::ofstream(logs / name, std::ios::binary) << std::string(bytes, 'x');
  }
  bool wasEchoed(const std::string& part) const {
    const auto lines = machine.log.lines();
    return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
      return line.find(part) != std::string::npos && !line.ends_with('\n');
    });
  }

  FakeMachine machine;
  const test::TemporaryDirectory directory;
  const std::filesystem::path logs = directory.path() / "state" / "Logs";
};

}  // namespace nivlo
