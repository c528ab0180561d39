// Lengths and places in JSON that another program has written.
#pragma once

#include <algorithm>

#include <nlohmann/json.hpp>

#include "host/surfaces/ScreenRect.hpp"

namespace nivlo {

/// Rounds a number, within bounds that no screen reaches and that sums do not overflow. Throws
/// nlohmann::json::exception if it is not one.
inline int lengthFrom(const nlohmann::json& number) {
  constexpr double kFarthest = 1e6;
  return static_cast<int>(std::clamp(number.get<double>(), -kFarthest, kFarthest));
}

inline bool isEmpty(const ScreenRect& rect) { return rect.width <= 0 || rect.height <= 0; }

}  // namespace nivlo
