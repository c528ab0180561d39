#include <gtest/gtest.h>

#include "linux/desktop/LinuxDeviceIdentity.hpp"
#include "tests/support/TemporaryDirectory.hpp"

namespace nivlo {
namespace {

class LinuxDeviceIdentityTest : public testing::Test {
 protected:
  std::string model() { return makeLinuxDeviceIdentity("", root.path())->model(); }

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

}  // namespace
}  // namespace nivlo
