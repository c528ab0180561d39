// The fixture of the log tests: a directory for logs, on a machine of fakes.
#pragma once

#include <filesystem>
#include <string>

#include <gmock/gmock.h>

#include "kit/MFLog/MFLoggerImpl.hpp"
#include "platform/Foundation/NSBundle.hpp"
#include "tests/fakes/FakeIdentity.hpp"
#include "tests/fakes/FakeMachine.hpp"
#include "tests/support/TemporaryDirectory.hpp"

namespace nivlo {

inline const std::string kHeader = "# Application: Probe\r\n# Version: 1.5\r\n# Device: model\r\n# System: 1";
inline const std::string kBanner =
    "\r\n\r\n######################## Application(V1.5) launched ########################\r\n";
constexpr std::size_t kThreshold = 1'048'576;

class LogTest : public testing::Test {
 protected:
  LogTest() {
    drivers().device = std::make_unique<FakeIdentity>("x86_64");
    NSBundle::setMainBundle({}, {{"CFBundleName", "Probe"}, {"CFBundleVersion", "1.5"}});
  }
  ~LogTest() override { NSBundle::setMainBundle({}, {}); }

  std::string text(const std::string& name = "log.txt") const { return directory.read(logs / name); }
  void fill(const std::string& name, std::size_t bytes) const {
    directory.write(logs / name, std::string(bytes, 'x'));
  }
  bool wasEchoed(const std::string& part) const { return machine.log.count(part) > 0; }

  FakeMachine machine;
  const test::TemporaryDirectory directory;
  const std::filesystem::path logs = directory.path() / "state" / "Logs";
};

}  // namespace nivlo
