#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

#include "kit/UIDevice+Hardware/UIDevice+Hardware.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

struct Model {
  std::string_view identifier;
  DeviceHardware hardware;
  const char* description;
  const char* simpleDescription;
  float number;
};

// A revision of a model has the model's value and rank, whatever its own identifier says.
constexpr Model kModels[] = {
    {"iPhone1,1", HardwareIPhone2G, "iPhone 2G", "iPhone 2G", 1.1F},
    {"iPhone1,2", HardwareIPhone3G, "iPhone 3G", "iPhone 3G", 1.2F},
    {"iPhone2,1", HardwareIPhone3GS, "iPhone 3GS", "iPhone 3GS", 2.1F},
    {"iPhone3,1", HardwareIPhone4GSM, "iPhone 4 (GSM)", "iPhone 4", 3.1F},
    {"iPhone3,2", HardwareIPhone4GSM, "iPhone 4 (GSM Rev. A)", "iPhone 4", 3.1F},
    {"iPhone3,3", HardwareIPhone4CDMA, "iPhone 4 (CDMA)", "iPhone 4", 3.3F},
    {"iPhone4,1", HardwareIPhone4S, "iPhone 4S", "iPhone 4S", 4.1F},
    {"iPhone5,1", HardwareIPhone5GSM, "iPhone 5 (GSM)", "iPhone 5", 5.1F},
    {"iPhone5,2", HardwareIPhone5Global, "iPhone 5 (Global)", "iPhone 5", 5.2F},
    {"iPhone5,3", HardwareIPhone5CGSM, "iPhone 5C (GSM)", "iPhone 5C", 5.3F},
    {"iPhone5,4", HardwareIPhone5CGlobal, "iPhone 5C (Global)", "iPhone 5C", 5.4F},
    {"iPhone6,1", HardwareIPhone5SGSM, "iPhone 5S (GSM)", "iPhone 5S", 6.1F},
    {"iPhone6,2", HardwareIPhone5SGlobal, "iPhone 5S (Global)", "iPhone 5S", 6.2F},
    {"iPod1,1", HardwareIPodTouch1, "iPod Touch (1 Gen)", "iPod Touch (1 Gen)", 1.1F},
    {"iPod2,1", HardwareIPodTouch2, "iPod Touch (2 Gen)", "iPod Touch (2 Gen)", 2.1F},
    {"iPod3,1", HardwareIPodTouch3, "iPod Touch (3 Gen)", "iPod Touch (3 Gen)", 3.1F},
    {"iPod4,1", HardwareIPodTouch4, "iPod Touch (4 Gen)", "iPod Touch (4 Gen)", 4.1F},
    {"iPod5,1", HardwareIPodTouch5, "iPod Touch (5 Gen)", "iPod Touch (5 Gen)", 5.1F},
    {"iPad1,1", HardwareIPadWiFi, "iPad (WiFi)", "iPad", 1.1F},
    {"iPad1,2", HardwareIPad1Cellular, "iPad 3G", "iPad", 1.2F},
    {"iPad2,1", HardwareIPad2WiFi, "iPad 2 (WiFi)", "iPad 2", 2.1F},
    {"iPad2,2", HardwareIPad2GSM, "iPad 2 (GSM)", "iPad 2", 2.2F},
    {"iPad2,3", HardwareIPad2CDMA, "iPad 2 (CDMA)", "iPad 2", 2.3F},
    {"iPad2,4", HardwareIPad2GSM, "iPad 2 (WiFi Rev. A)", "iPad 2", 2.2F},
    {"iPad2,5", HardwareIPadMiniWiFi, "iPad Mini (WiFi)", "iPad Mini", 2.5F},
    {"iPad2,6", HardwareIPadMiniGSM, "iPad Mini (GSM)", "iPad Mini", 2.6F},
    {"iPad2,7", HardwareIPadMiniCDMA, "iPad Mini (CDMA)", "iPad Mini", 2.7F},
    {"iPad3,1", HardwareIPad3WiFi, "iPad 3 (WiFi)", "iPad 3", 3.1F},
    {"iPad3,2", HardwareIPad3CDMA, "iPad 3 (CDMA)", "iPad 3", 3.2F},
    {"iPad3,3", HardwareIPad3Global, "iPad 3 (Global)", "iPad 3", 3.3F},
    {"iPad3,4", HardwareIPad4WiFi, "iPad 4 (WiFi)", "iPad 4", 3.4F},
    {"iPad3,5", HardwareIPad4CDMA, "iPad 4 (CDMA)", "iPad 4", 3.5F},
    {"iPad3,6", HardwareIPad4Global, "iPad 4 (Global)", "iPad 4", 3.6F},
    {"iPad4,1", HardwareIPadAirWiFi, "iPad Air (WiFi)", "iPad Air", 4.1F},
    {"iPad4,2", HardwareIPadAirGSM, "iPad Air (WiFi+GSM)", "iPad Air", 4.2F},
    {"iPad4,3", HardwareIPadAirCDMA, "iPad Air (WiFi+CDMA)", "iPad Air", 4.3F},
    {"iPad4,4", HardwareIPadMiniRetinaWiFi, "iPad Mini Retina (WiFi)", "iPad Mini Retina", 4.4F},
    {"iPad4,5", HardwareIPadMiniRetinaCDMA, "iPad Mini Retina (WiFi+CDMA)", "iPad Mini Retina", 4.5F},
    {"i386", HardwareSimulator, "Simulator", "Simulator", 100.0F},
    {"x86_64", HardwareSimulator, "Simulator", "Simulator", 100.0F},
};

constexpr float kUnlistedNumber = 200;
constexpr std::size_t kLongestIdentifier = 99;  // bytes

const Model* modelWithIdentifier(std::string_view identifier) {
  const auto* found = std::ranges::find(kModels, identifier, &Model::identifier);
  return found == std::end(kModels) ? nullptr : found;
}

bool hasPrefix(const UIDevice& device, std::string_view prefix) {
  return hardwareString(device).starts_with(prefix);
}

std::optional<std::string> describe(const UIDevice& device, const char* Model::*description) {
  const auto identifier = hardwareString(device);
  if (const auto* model = modelWithIdentifier(identifier)) {
    return model->*description;
  }
  NSLog(
      "This is a device which is not listed in this category. Please visit https://nivlo.example/devices and "
      "add a comment there.");
  NSLog("Your device hardware string is: %@", identifier);
  for (const auto* family : {"iPhone", "iPod", "iPad"}) {
    if (identifier.starts_with(family)) {
      return family;
    }
  }
  return std::nullopt;
}

}  // namespace

std::string hardwareString(const UIDevice& device) {
  const auto machine = device.machine();
  auto length = std::min(machine.size(), machine.find('\0'));
  if (length > kLongestIdentifier) {
    length = kLongestIdentifier;
    const auto continuesCharacter = [&] {
      return (static_cast<unsigned char>(machine[length]) & 0xC0) == 0x80;
    };
    while (length > 0 && continuesCharacter()) {
      --length;
    }
  }
  return machine.substr(0, length);
}

DeviceHardware hardware(const UIDevice& device) {
  const auto* model = modelWithIdentifier(hardwareString(device));
  return model ? model->hardware : HardwareNotAvailable;
}

std::optional<std::string> hardwareDescription(const UIDevice& device) {
  return describe(device, &Model::description);
}

std::optional<std::string> hardwareSimpleDescription(const UIDevice& device) {
  return describe(device, &Model::simpleDescription);
}

float hardwareNumber(const UIDevice&, DeviceHardware value) {
  const auto* found = std::ranges::find(kModels, value, &Model::hardware);
  return found == std::end(kModels) ? kUnlistedNumber : found->number;
}

bool isCurrentDeviceHardwareBetterThan(const UIDevice& device, DeviceHardware value) {
  return hardwareNumber(device, hardware(device)) >= hardwareNumber(device, value);
}

bool isiPhone4(const UIDevice& device) { return hasPrefix(device, "iPhone3"); }
bool isiPhone4S(const UIDevice& device) { return hasPrefix(device, "iPhone4"); }
bool isiPhone5_5S_5C(const UIDevice& device) {
  return hasPrefix(device, "iPhone5") || hasPrefix(device, "iPhone6");
}
bool isiTouch5(const UIDevice& device) { return hasPrefix(device, "iPod5"); }
bool isiPad2_Mini1(const UIDevice& device) { return hasPrefix(device, "iPad2"); }
bool isiPadRetina(const UIDevice& device) { return hasPrefix(device, "iPad3") || hasPrefix(device, "iPad4"); }
bool isiPad(const UIDevice& device) { return hasPrefix(device, "iPad"); }
bool isiPhone(const UIDevice& device) { return hasPrefix(device, "iPhone"); }
bool isiPod(const UIDevice& device) { return hasPrefix(device, "iPod"); }

}  // namespace nivlo
