// Formatted strings, with printf's directives and with %@ for objects.
#pragma once

#include <concepts>
#include <string>
#include <string_view>
#include <type_traits>

#include <fmt/printf.h>

namespace nivlo {

/// A type with a description() is an object that "%@" formats.
template <typename T>
concept Describable = requires(const T& value) {
  { value.description() } -> std::convertible_to<std::string>;
};

/// The formatter behind stringWithFormat.
std::string vStringWithFormat(std::string_view format, fmt::printf_args arguments);

/// Converts an argument of stringWithFormat before it is formatted.
template <typename T>
auto formatArgument(const T& value) {
  if constexpr (Describable<T>) {
    return std::string(value.description());
  } else if constexpr (std::is_convertible_v<const T&, std::string_view>) {
    return std::string(std::string_view(value));
  } else {
    static_assert(std::is_arithmetic_v<T> || std::is_pointer_v<T>,
                  "a format takes numbers, strings and describable objects");
    return value;
  }
}

/// Fills in a format: "%@" takes a string or an object with a description; "%d", "%ld", "%f", "%.2f", "%s",
/// "%x" and "%%" are printf's, with its flags, width and precision. The types of the arguments are known, so
/// length modifiers such as "l" may be left out, and strings may hold any bytes. When an argument is missing
/// or does not fit its directive, the result is "<format error: CAUSE: FORMAT>", because a bad log line must
/// not end the program.
template <typename... Arguments>
std::string stringWithFormat(std::string_view format, const Arguments&... arguments) {
  return [&](const auto&... converted) {
    return vStringWithFormat(format, fmt::make_printf_args(converted...));
  }(formatArgument(arguments)...);
}

}  // namespace nivlo
