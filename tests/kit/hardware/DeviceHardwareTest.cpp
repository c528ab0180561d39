#include <limits>
#include <tuple>

#include <gtest/gtest.h>

#include "kit/UIDevice+Hardware/UIDevice+Hardware.hpp"
#include "tests/fakes/FakeIdentity.hpp"
#include "tests/fakes/FakeMachine.hpp"

namespace nivlo {
namespace {

class DeviceHardwareTest : public testing::Test {
 protected:
  static void become(std::string identifier) {
    drivers().device = std::make_unique<FakeIdentity>(std::move(identifier));
  }

  FakeMachine machine;
  const UIDevice& device = *UIDevice::currentDevice();
};

using Text = std::optional<std::string>;

TEST_F(DeviceHardwareTest, AModelIsMistakenForAnother) {
  const std::tuple<const char*, int, Text, Text, float> models[] = {
      {"iPhone3,2", 4, "iPhone 4 (GSM Rev. A)", "iPhone 4", 3.1F},
      {"iPhone4,1", 6, "iPhone 4S", "iPhone 4S", 4.1F},
      {"iPad1,2", 23, "iPad 3G", "iPad", 1.2F},
      {"iPad2,4", 19, "iPad 2 (WiFi Rev. A)", "iPad 2", 2.2F},
      {"iPad3,3", 22, "iPad 3 (Global)", "iPad 3", 3.3F},
      {"iPad4,4", 32, "iPad Mini Retina (WiFi)", "iPad Mini Retina", 4.4F},
      {"x86_64", 37, "Simulator", "Simulator", 100},
      {"i386", 37, "Simulator", "Simulator", 100}};
  for (const auto& [identifier, value, description, simpleDescription, number] : models) {
    become(identifier);
    EXPECT_EQ(hardware(device), value) << identifier;
    EXPECT_EQ(hardwareDescription(device), description);
    EXPECT_EQ(hardwareSimpleDescription(device), simpleDescription);
    EXPECT_EQ(hardwareNumber(device, hardware(device)), number);
    EXPECT_TRUE(isCurrentDeviceHardwareBetterThan(device, hardware(device)));
  }
  EXPECT_TRUE(machine.log.lines().empty());
}

TEST_F(DeviceHardwareTest, AFamilyClaimsAStrangerOrMissesALaterModel) {
  using Family = bool (*)(const UIDevice&);
  const Family families[] = {isiPhone4,    isiPhone4S, isiPhone5_5S_5C, isiTouch5, isiPad2_Mini1,
                             isiPadRetina, isiPad,     isiPhone,        isiPod};
  const std::pair<const char*, const char*> cases[] = {
      {"iPhone3,9", "1......1."}, {"iPhone4,1", ".1.....1."}, {"iPhone5,4", "..1....1."},
      {"iPhone6,2", "..1....1."}, {"iPhone7,2", ".......1."}, {"iPod5,1", "...1....1"},
      {"iPad2,7", "....1.1.."},   {"iPad3,1", ".....11.."},   {"iPad4,4", ".....11.."},
      {"iPad1,1", "......1.."},   {"iphone4,1", "........."}, {"x86_64", "........."}};
  for (const auto& [identifier, expected] : cases) {
    become(identifier);
    std::string claims;
    for (const auto family : families) {
      claims += family(device) ? '1' : '.';
    }
    EXPECT_EQ(claims, expected) << identifier;
  }
}

TEST_F(DeviceHardwareTest, AnUnlistedDeviceIsNotReportedOrRanksBelowAListedOne) {
  become("iPhone7,2");
  for (int value = HardwareNotAvailable; value <= HardwareSimulator; ++value) {
    EXPECT_TRUE(isCurrentDeviceHardwareBetterThan(device, static_cast<DeviceHardware>(value))) << value;
  }
  for (const int value : {0, -1, 38, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_EQ(hardwareNumber(device, static_cast<DeviceHardware>(value)), 200) << value;
  }
  EXPECT_EQ(hardware(device), HardwareNotAvailable);
  EXPECT_TRUE(machine.log.lines().empty());
  EXPECT_EQ(hardwareDescription(device), "iPhone");
  become("iPod9,9");
  EXPECT_EQ(hardwareSimpleDescription(device), "iPod");
  become("AppleTV2,1");
  EXPECT_EQ(hardwareDescription(device), std::nullopt);
  const auto lines = machine.log.lines();
  ASSERT_EQ(lines.size(), 6u);
  EXPECT_TRUE(
      lines[0].starts_with("This is a device which is not listed in this category. Please visit http"));
  EXPECT_TRUE(lines[0].ends_with(" and add a comment there."));
  EXPECT_EQ(lines[1], "Your device hardware string is: iPhone7,2");
  EXPECT_EQ(lines[5], "Your device hardware string is: AppleTV2,1");
}

}  // namespace
}  // namespace nivlo
