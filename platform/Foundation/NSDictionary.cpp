#include "platform/Foundation/NSDictionary.hpp"

#include <algorithm>

namespace nivlo {

namespace {

bool stringBoolValue(std::string_view text) {
  const auto skip = [&text](std::string_view set) {
    const auto start = text.find_first_not_of(set);
    text.remove_prefix(start == std::string_view::npos ? text.size() : start);
  };
  skip(" \t\r\n");
  if (text.starts_with('+') || text.starts_with('-')) {
    text.remove_prefix(1);
  }
  skip("0");
  return !text.empty() && std::string_view("YyTt123456789").find(text.front()) != std::string_view::npos;
}

}  // namespace

const NSValue* NSDictionary::objectForKey(std::string_view key) const {
  const auto found =
      std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) { return entry.first == key; });
  return found == entries_.end() ? nullptr : &found->second;
}

void NSDictionary::setObject(NSValue value, std::string_view key) {
  const auto found =
      std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) { return entry.first == key; });
  if (found == entries_.end()) {
    entries_.emplace_back(key, std::move(value));
  } else {
    found->second = std::move(value);
  }
}

bool boolValue(const NSValue* value) {
  if (!value) {
    return false;
  }
  if (const auto* flag = std::get_if<bool>(value)) {
    return *flag;
  }
  if (const auto* number = std::get_if<double>(value)) {
    return *number != 0;
  }
  return stringBoolValue(std::get<std::string>(*value));
}

bool isEqualToString(const NSValue* value, std::string_view text) {
  const auto* string = value ? std::get_if<std::string>(value) : nullptr;
  return string && *string == text;
}

}  // namespace nivlo
