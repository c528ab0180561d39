#include "host/surfaces/windows/DesktopWindows.hpp"

namespace nivlo {

Cover DesktopWindows::coverOf(const std::string& output) const {
  const auto found = outputs.find(output);
  if (found == outputs.end()) {
    return Cover::Unknown;
  }
  const auto& area = found->second;
  std::vector<ScreenRect> places;
  for (const auto& window : windows) {
    if (window.fullscreen && coversMost(window.place, area)) {
      return Cover::Fullscreen;
    }
    places.push_back(window.place);
  }
  if (hideNearlyAll(places, area)) {
    return Cover::Maximized;
  }
  return uncoveredShare(area, places) < 1 ? Cover::Windows : Cover::Nothing;
}

}  // namespace nivlo
