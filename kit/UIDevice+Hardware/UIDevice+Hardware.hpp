// The exact model of the device: its names, its rank and its family.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/UIKit/UIDevice.hpp"

namespace nivlo {

/// The models that are known. Their values say nothing about age or rank; use hardwareNumber() for that.
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

/// Returns the machine identifier, for example "iPhone4,1", up to its first NUL. Of one that is longer than
/// 99 bytes, as many whole characters as fit.
std::string hardwareString(const UIDevice& device);

/// Returns the device's model; HardwareNotAvailable when it is not known.
DeviceHardware hardware(const UIDevice& device);

/// Returns the model's full name. When the model is not known, asks the user in the system log to report it,
/// and returns the name of its family ("iPhone", "iPod" or "iPad"); absent when that is not known either.
std::optional<std::string> hardwareDescription(const UIDevice& device);
/// Returns the model's short name; like hardwareDescription when the model is not known.
std::optional<std::string> hardwareSimpleDescription(const UIDevice& device);

/// Returns the model's rank: the two numbers of its identifier joined by a decimal point, for example 4.1.
/// The simulator ranks 100. HardwareNotAvailable and values that are not models rank 200, above all models.
/// The result does not depend on the device.
float hardwareNumber(const UIDevice& device, DeviceHardware value);
/// Returns whether the device ranks as high as the model, or higher; true for every device that is not known.
bool isCurrentDeviceHardwareBetterThan(const UIDevice& device, DeviceHardware value);

// These tell whether the device belongs to a family. Only the beginning of its identifier counts, so models
// of the family that are not known count too.

bool isiPhone4(const UIDevice& device);
bool isiPhone4S(const UIDevice& device);
bool isiPhone5_5S_5C(const UIDevice& device);
bool isiTouch5(const UIDevice& device);
bool isiPad2_Mini1(const UIDevice& device);
/// Identifiers that begin with "iPad3" or "iPad4".
bool isiPadRetina(const UIDevice& device);
bool isiPad(const UIDevice& device);
bool isiPhone(const UIDevice& device);
bool isiPod(const UIDevice& device);

}  // namespace nivlo
