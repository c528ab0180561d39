// What is known about the exact model of the device.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/UIKit/UIDevice.hpp"

namespace nivlo {

/// The models. The values are in no order of age or rank; hardwareNumber() ranks them.
enum DeviceHardware : std::int32_t {
  HardwareNotAvailable = 0,
  HardwareIPhone2G = 1,
  HardwareIPhone3G = 2,
  HardwareIPhone3GS = 3,
  HardwareIPhone4GSM = 4,
  HardwareIPhone4CDMA = 5,
  HardwareIPhone4S = 6,
  HardwareIPhone5GSM = 7,
  HardwareIPhone5Global = 8,
  HardwareIPhone5CGSM = 9,
  HardwareIPhone5CGlobal = 10,
  HardwareIPhone5SGSM = 11,
  HardwareIPhone5SGlobal = 12,
  HardwareIPodTouch1 = 13,
  HardwareIPodTouch2 = 14,
  HardwareIPodTouch3 = 15,
  HardwareIPodTouch4 = 16,
  HardwareIPodTouch5 = 17,
  HardwareIPadWiFi = 18,
  HardwareIPad2GSM = 19,
  HardwareIPad2WiFi = 20,
  HardwareIPad2CDMA = 21,
  HardwareIPad3Global = 22,
  HardwareIPad1Cellular = 23,
  HardwareIPad3WiFi = 24,
  HardwareIPad3CDMA = 25,
  HardwareIPad4CDMA = 26,
  HardwareIPad4WiFi = 27,
  HardwareIPad4Global = 28,
  HardwareIPadMiniGSM = 29,
  HardwareIPadMiniWiFi = 30,
  HardwareIPadMiniCDMA = 31,
  HardwareIPadMiniRetinaWiFi = 32,
  HardwareIPadMiniRetinaCDMA = 33,
  HardwareIPadAirWiFi = 34,
  HardwareIPadAirGSM = 35,
  HardwareIPadAirCDMA = 36,
  HardwareSimulator = 37,
};

/// The machine identifier, read afresh: its UTF-8 text up to the first zero byte, and of that at most 99
/// bytes. A longer one is cut between two characters.
std::string hardwareString(const UIDevice& device);

/// HardwareNotAvailable for a device that is not listed.
DeviceHardware hardware(const UIDevice& device);

/// The full name. For a device that is not listed, after a request on the console to report it: the family's
/// name, or nothing where even that is unknown.
std::optional<std::string> hardwareDescription(const UIDevice& device);
/// The short name; as above for a device that is not listed.
std::optional<std::string> hardwareSimpleDescription(const UIDevice& device);

/// The model's rank: its identifier's two numbers joined by a decimal point. The simulator ranks 100; no
/// model, or a value that is none, ranks 200. The device itself does not matter.
float hardwareNumber(const UIDevice& device, DeviceHardware value);
/// Whether the device ranks as high as the model, or higher.
bool isCurrentDeviceHardwareBetterThan(const UIDevice& device, DeviceHardware value);

/// The families, told by how the identifier begins: later models of a family count, listed or not.
bool isiPhone4(const UIDevice& device);
bool isiPhone4S(const UIDevice& device);
bool isiPhone5_5S_5C(const UIDevice& device);
bool isiTouch5(const UIDevice& device);
bool isiPad2_Mini1(const UIDevice& device);
/// The third iPad and later.
bool isiPadRetina(const UIDevice& device);
bool isiPad(const UIDevice& device);
bool isiPhone(const UIDevice& device);
bool isiPod(const UIDevice& device);

}  // namespace nivlo
