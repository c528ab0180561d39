#include "linux/motion/iio/IIOSensor.hpp"

#include <cerrno>
#include <utility>

#include <unistd.h>

#include "linux/motion/iio/SysfsAttribute.hpp"

namespace nivlo {

namespace {

constexpr double kStandardGravity = 9.80665;  // m/s²

}  // namespace

IIOSensor::IIOSensor(std::string directory, std::string_view mountMatrix)
    : directory_(std::move(directory)), axes_{readAxis('x'), readAxis('y'), readAxis('z')} {
  const auto fromUdev = MountMatrix::parse(mountMatrix);
  mountMatrix_ = fromUdev ? *fromUdev : readMountMatrix();
}

bool IIOSensor::isAt(const std::string& directory) {
  return access((directory + "/in_accel_x_raw").c_str(), F_OK) == 0;
}

IIOSensor::Sample IIOSensor::sample() const {
  std::array<double, 3> measured{};
  for (std::size_t i = 0; i < axes_.size(); ++i) {
    const auto raw = readAttribute(axes_[i].rawPath);
    if (raw.error) {
      return {{}, raw.error};
    }
    const auto number = parseNumber(raw.text);
    if (!number) {
      return {{}, EPROTO};
    }
    measured[i] = (*number + axes_[i].offset) * axes_[i].scale / kStandardGravity;
  }
  return {mountMatrix_.apply({measured[0], measured[1], measured[2]}), 0};
}

IIOSensor::Axis IIOSensor::readAxis(char name) const {
  return {directory_ + "/in_accel_" + name + "_raw", readConstant(name, "offset", 0),
          readConstant(name, "scale", 1)};
}

double IIOSensor::readConstant(char axis, std::string_view kind, double otherwise) const {
  const std::string prefix = directory_ + "/in_accel_";
  for (const auto& path : {prefix + axis + '_' + std::string(kind), prefix + std::string(kind)}) {
    if (const auto number = parseNumber(readAttribute(path).text)) {
      return *number;
    }
  }
  return otherwise;
}

MountMatrix IIOSensor::readMountMatrix() const {
  for (const char* name : {"/in_accel_mount_matrix", "/in_mount_matrix", "/mount_matrix"}) {
    if (const auto matrix = MountMatrix::parse(readAttribute(directory_ + name).text)) {
      return *matrix;
    }
  }
  return {};
}

}  // namespace nivlo
