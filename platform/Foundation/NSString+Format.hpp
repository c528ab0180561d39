// The platform's string formats, made safe by types.
#pragma once

#include <concepts>
#include <string>
#include <string_view>
#include <type_traits>

#include <fmt/printf.h>

namespace nivlo {

/// Anything with a description can stand for "%@".
template <typename T>
concept Describable = requires(const T& value) {
  { value.description() } -> std::convertible_to<std::string>;
};

/// A format in the platform's syntax ("%@", "%d", "%f", "%.2f", "%s", "%x", "%%", with flags, width and
/// precision) filled in from typed arguments. An argument that does not fit its directive, or is missing,
/// yields the text
/// "<format error: cause: the format>" in place of the message: a bad log line must never take the program
/// down.
std::string vStringWithFormat(std::string_view format, fmt::printf_args arguments);

namespace detail {

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

}  // namespace detail

template <typename... Arguments>
std::string stringWithFormat(std::string_view format, const Arguments&... arguments) {
  return [&](const auto&... converted) {
    return vStringWithFormat(format, fmt::make_printf_args(converted...));
  }(detail::formatArgument(arguments)...);
}

}  // namespace nivlo
