// A small dictionary that keeps its entries in the order in which they were added.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace nivlo {

/// A value in a dictionary: a boolean, a number, or a string in UTF-8.
using NSValue = std::variant<bool, double, std::string>;

/// Strings mapped to values, for example the options of a wallpaper. A value type: copies are independent.
/// Every look-up searches from the start, so this is for tens of entries, not for thousands.
class NSDictionary {
 public:
  using Entry = std::pair<std::string, NSValue>;

  NSDictionary() = default;
  /// A dictionary of these entries. Their keys must be distinct.
  NSDictionary(std::initializer_list<Entry> entries) : entries_(entries) {}

  /// The value under the key; null when there is none. Valid until the dictionary changes.
  const NSValue* objectForKey(std::string_view key) const;
  /// Sets the value under the key. A key that is there already keeps its place in the order.
  void setObject(NSValue value, std::string_view key);

  /// The entries in their order.
  const std::vector<Entry>& entries() const { return entries_; }
  /// Equal dictionaries have equal entries in the same order.
  bool operator==(const NSDictionary&) const = default;

 private:
  std::vector<Entry> entries_;
};

/// Reads the value as a boolean. A number is true when it is not 0. A string is true when, after white space,
/// a sign and zeros, it begins with Y, y, T, t or a digit from 1 to 9. Null is false.
bool boolValue(const NSValue* value);

/// Returns whether the value is this very string. False for null, and for a value that is not a string.
bool isEqualToString(const NSValue* value, std::string_view text);

}  // namespace nivlo
