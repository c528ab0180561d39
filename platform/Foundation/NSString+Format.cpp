#include <exception>

#include "platform/Foundation/NSString+Format.hpp"

namespace nivlo {

namespace {

/// Replaces "%@" by "%s", as the arguments for it are strings by now.
std::string withObjectDirectivesAsStrings(std::string_view format) {
  std::string result(format);
  for (std::size_t i = 0; i < result.size(); ++i) {
    if (result[i] != '%') {
      continue;
    }
    const auto directive = result.find_first_not_of("0123456789.-+ #'*$", i + 1);
    if (directive == std::string::npos) {
      break;
    }
    if (result[directive] == '@') {
      result[directive] = 's';
    }
    i = directive;
  }
  return result;
}

}  // namespace

std::string vStringWithFormat(std::string_view format, fmt::printf_args arguments) {
  try {
    return fmt::vsprintf(fmt::string_view(withObjectDirectivesAsStrings(format)), arguments);
  } catch (const std::exception& error) {
    return std::string("<format error: ") + error.what() + ": " + std::string(format) + ">";
  }
}

}  // namespace nivlo
