// The orientation of a sensor in the device.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "platform/drivers/AccelerometerDriver.hpp"

namespace nivlo {

/// Converts accelerations along a sensor's own axes to accelerations along the device's axes, as the kernel
/// defines them (see CMAcceleration).
class MountMatrix {
 public:
  /// The matrix of a sensor whose axes are the device's.
  MountMatrix() = default;

  /// Parses "a, b, c; d, e, f; g, h, i", of which "a, b, c" gives the device's x. Absent for any other text,
  /// and for a matrix with a row of zeros, which would lose an axis.
  static std::optional<MountMatrix> parse(std::string_view text);

  /// The same acceleration along the device's axes.
  CMAcceleration apply(const CMAcceleration& measured) const;

 private:
  using Row = std::array<double, 3>;
  static std::optional<Row> parseRow(std::string_view text);

  std::array<Row, 3> rows_{Row{1, 0, 0}, Row{0, 1, 0}, Row{0, 0, 1}};
};

}  // namespace nivlo
