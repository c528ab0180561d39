// How a sensor is mounted in its device.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "platform/drivers/AccelerometerDriver.hpp"

namespace nivlo {

/// Turns what the sensor's own axes measure into the device's axes.
class MountMatrix {
 public:
  /// The sensor's axes are the device's.
  MountMatrix() = default;

  /// Reads "a, b, c; d, e, f; g, h, i". None for anything else, and for a matrix with a row of zeros, which
  /// would lose an axis.
  static std::optional<MountMatrix> parse(std::string_view text);

  CMAcceleration apply(const CMAcceleration& measured) const;

 private:
  using Row = std::array<double, 3>;
  static std::optional<Row> parseRow(std::string_view text);

  std::array<Row, 3> rows_{Row{1, 0, 0}, Row{0, 1, 0}, Row{0, 0, 1}};
};

}  // namespace nivlo
