#include "linux/motion/iio/MountMatrix.hpp"

#include <algorithm>

#include "linux/motion/iio/SysfsAttribute.hpp"

namespace nivlo {

namespace {

/// Removes the part before the first separator, and the separator, from `*text` and returns the part. Without
/// a separator that is the whole text.
std::string_view takePart(std::string_view* text, char separator) {
  const auto length = std::min(text->find(separator), text->size());
  const auto part = text->substr(0, length);
  text->remove_prefix(std::min(length + 1, text->size()));
  return part;
}

}  // namespace

std::optional<MountMatrix::Row> MountMatrix::parseRow(std::string_view text) {
  Row row{};
  for (auto& cell : row) {
    const auto number = parseNumber(takePart(&text, ','));
    if (!number) {
      return std::nullopt;
    }
    cell = *number;
  }
  const bool losesAxis = std::all_of(row.begin(), row.end(), [](double cell) { return cell == 0; });
  return losesAxis || !text.empty() ? std::nullopt : std::make_optional(row);
}

std::optional<MountMatrix> MountMatrix::parse(std::string_view text) {
  MountMatrix matrix;
  for (auto& target : matrix.rows_) {
    const auto row = parseRow(takePart(&text, ';'));
    if (!row) {
      return std::nullopt;
    }
    target = *row;
  }
  return text.empty() ? std::make_optional(matrix) : std::nullopt;
}

CMAcceleration MountMatrix::apply(const CMAcceleration& measured) const {
  const auto along = [&](const Row& row) {
    return row[0] * measured.x + row[1] * measured.y + row[2] * measured.z;
  };
  return {along(rows_[0]), along(rows_[1]), along(rows_[2])};
}

}  // namespace nivlo
