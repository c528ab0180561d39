#include <gtest/gtest.h>
#include <sys/utsname.h>

#include "linux/desktop/LinuxDeviceIdentity.hpp"
#include "tests/support/TemporaryDirectory.hpp"

namespace nivlo {
namespace {

class LinuxDeviceIdentityTest : public testing::Test {
 protected:
  std::string model() { return makeLinuxDeviceIdentity("", root.path())->model(); }
  std::string systemVersion() { return makeLinuxDeviceIdentity("", root.path())->systemVersion(); }

  test::TemporaryDirectory root;
};

TEST_F(LinuxDeviceIdentityTest, TheModelIsEmptyOrAPlaceholderOfTheFirmware) {
  EXPECT_EQ(model(), "Linux");
  root.write("sys/class/dmi/id/product_name", "To Be Filled By O.E.M.\n");
  root.write("sys/class/dmi/id/sys_vendor", "ACME\n");
  EXPECT_EQ(model(), "Linux");
  root.write("sys/class/dmi/id/product_name", " Tablet 3 \n");
  EXPECT_EQ(model(), "ACME Tablet 3");
  root.write("sys/class/dmi/id/product_name", "ACME Tablet\n");
  EXPECT_EQ(model(), "ACME Tablet");
  root.write("sys/class/dmi/id/sys_vendor", "Default string\n");
  EXPECT_EQ(model(), "ACME Tablet");
  root.write("proc/device-tree/model", std::string("ACME Board 4\0", 13));
  EXPECT_EQ(model(), "ACME Board 4");
}

TEST_F(LinuxDeviceIdentityTest, TheVersionKeepsItsQuotesOrIsNotFound) {
  utsname kernel{};
  ASSERT_EQ(uname(&kernel), 0);
  EXPECT_EQ(systemVersion(), kernel.release);
  root.write("usr/lib/os-release", "NAME=Some\nPRETTY_NAME=\"Some \\\"rolling\\\" Linux\"\n");
  EXPECT_EQ(systemVersion(), "Some \"rolling\" Linux");
  root.write("etc/os-release", "PRETTY_NAME='Other Linux 12'\nVERSION_ID=\"12\"\n");
  EXPECT_EQ(systemVersion(), "12");
  root.write("etc/os-release", "VERSION_ID=\"12\n");
  EXPECT_EQ(systemVersion(), "Some \"rolling\" Linux") << "a broken line";
}

}  // namespace
}  // namespace nivlo
