#include "host/bundle/GuardedWallpaper.hpp"

#include <utility>

#include "host/bundle/Thrown.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

std::shared_ptr<Wallpaper> GuardedWallpaper::guard(std::shared_ptr<Wallpaper> wallpaper, std::string name,
                                                   std::string* error) {
  if (!wallpaper) {
    *error = "its initWithFrame returns nothing";
    return nullptr;
  }
  std::shared_ptr<UIView> view;
  const auto thrown = thrownBy([&] { view = wallpaper->view(); });
  if (!view) {
    *error = thrown.empty() ? "it has no view" : "its view throws: " + thrown;
    return nullptr;
  }
  return std::shared_ptr<Wallpaper>(
      new GuardedWallpaper(std::move(wallpaper), std::move(view), std::move(name)));
}

GuardedWallpaper::GuardedWallpaper(std::shared_ptr<Wallpaper> wallpaper, std::shared_ptr<UIView> view,
                                   std::string name)
    : wallpaper_(std::move(wallpaper)), view_(std::move(view)), name_(std::move(name)) {}

void GuardedWallpaper::setWallpaperOptions(const NSDictionary& options) {
  attempt("setWallpaperOptions", [&] { wallpaper_->setWallpaperOptions(options); });
}

void GuardedWallpaper::setWallpaperVariant(long variant) {
  attempt("setWallpaperVariant", [&] { wallpaper_->setWallpaperVariant(variant); });
}

void GuardedWallpaper::setAnimating(bool animating) {
  attempt("setAnimating", [&] { wallpaper_->setAnimating(animating); });
}

template <typename Operation>
void GuardedWallpaper::attempt(const char* operation, const Operation& perform) {
  if (const auto thrown = thrownBy(perform); !thrown.empty()) {
    NSLog("wallpaper %@: %@ throws: %@. Nivlo goes on; tell the wallpaper's author", name_, operation,
          thrown);
  }
}

}  // namespace nivlo
