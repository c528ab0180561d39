// A small dictionary that keeps the order in which its keys were put in.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace nivlo {

/// What a dictionary holds: a boolean number, a number or a string.
using NSValue = std::variant<bool, double, std::string>;

class NSDictionary {
 public:
  using Entry = std::pair<std::string, NSValue>;

  NSDictionary() = default;
  /// Keys must be distinct.
  NSDictionary(std::initializer_list<Entry> entries) : entries_(entries) {}

  /// The key's value, or null. Valid until the dictionary changes.
  const NSValue* objectForKey(std::string_view key) const;
  /// Overwrites the value of a key that is there; appends one that is not.
  void setObject(NSValue value, std::string_view key);

  const std::vector<Entry>& entries() const { return entries_; }
  bool operator==(const NSDictionary&) const = default;

 private:
  std::vector<Entry> entries_;
};

/// The value read as a boolean: a number that is not 0, or a string that begins (after white space, a sign
/// and zeros) with Y, y, T, t or a digit 1 to 9. False for null.
bool boolValue(const NSValue* value);

/// Whether the value is exactly this string. False for null and for anything but a string.
bool isEqualToString(const NSValue* value, std::string_view text);

}  // namespace nivlo
