// Turns the exception that a wallpaper threw into a message.
#pragma once

#include <exception>
#include <string>

#include "host/text/VisibleText.hpp"

namespace nivlo {

/// Performs the action. Returns what it threw, fit to be shown; empty when it threw nothing.
template <typename Action>
std::string thrownBy(const Action& action) {
  constexpr auto kNameless = "an exception without a message";
  try {
    action();
    return "";
  } catch (const std::exception& thrown) {
    const auto text = visibleText(thrown.what());
    return text.empty() ? kNameless : text;
  } catch (...) {
    return kNameless;
  }
}

}  // namespace nivlo
