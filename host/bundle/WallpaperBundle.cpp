#include "host/bundle/WallpaperBundle.hpp"

#include <algorithm>
#include <functional>
#include <utility>
#include <variant>

#include <fmt/format.h>

#include "host/bundle/BundleLoader.hpp"
#include "host/bundle/GuardedWallpaper.hpp"
#include "host/bundle/Thrown.hpp"
#include "host/text/VisibleText.hpp"
#include "platform/Foundation/NSLog.hpp"
#include "platform/HostContract/WallpaperInfoKeys.hpp"
#include "platform/HostContract/WallpaperOptionKeys.hpp"

namespace nivlo {

std::shared_ptr<const WallpaperBundle> WallpaperBundle::ask(std::shared_ptr<NSBundle> bundle,
                                                            const WallpaperClass& wallpaperClass,
                                                            std::string* error) {
  std::shared_ptr<WallpaperBundle> result(new WallpaperBundle(std::move(bundle), wallpaperClass));
  std::vector<NSDictionary> presets;
  const struct {
    const char* operation;
    std::function<void()> perform;
  } questions[] = {
      {"identifier", [&] { result->identifier_ = visibleText(wallpaperClass.identifier()); }},
      {"colorChangesSignificantly",
       [&] { result->colorChanges_ = wallpaperClass.colorChangesSignificantly(); }},
      {"presetWallpaperOptions", [&] { presets = wallpaperClass.presetWallpaperOptions(); }},
      {"descriptionForOptions", [&] { result->describe(std::move(presets)); }},
      {"thumbnailImageName", [&] { result->thumbnailName_ = wallpaperClass.thumbnailImageName(); }},
      {"representativeThumbnailImageName",
       [&] { result->representativeName_ = wallpaperClass.representativeThumbnailImageName(); }}};
  for (const auto& [operation, perform] : questions) {
    if (const auto thrown = thrownBy(perform); !thrown.empty()) {
      *error = fmt::format("its {} throws: {}", operation, thrown);
      return nullptr;
    }
  }
  return result;
}

WallpaperBundle::WallpaperBundle(std::shared_ptr<NSBundle> bundle, const WallpaperClass& wallpaperClass)
    : bundle_(std::move(bundle)),
      class_(wallpaperClass),
      name_(visibleText(bundle_->infoString(kBundleNameKey))) {
  if (name_.empty()) {
    name_ = visibleText(path().stem().string());
  }
}

void WallpaperBundle::describe(std::vector<NSDictionary> presets) {
  if (presets.empty()) {
    presets.emplace_back();
  }
  for (auto& options : presets) {
    auto description = visibleText(class_.descriptionForOptions(options));
    if (description.empty()) {
      description = fmt::format("preset {}", presets_.size() + 1);
    }
    presets_.push_back({std::move(options), std::move(description)});
  }
}

std::string WallpaperBundle::whyNoPreset(int number) const {
  const auto count = static_cast<int>(presets_.size());
  if (number >= 1 && number <= count) {
    return "";
  }
  const auto argument = path() == defaultBundlePath() ? "" : " --bundle " + path().string();
  return fmt::format("{} has {} preset{}; there is no preset {}. 'nivlo presets{}' lists them", name_, count,
                     count == 1 ? "" : "s", number, argument);
}

bool WallpaperBundle::understands(std::string_view key) const {
  return std::any_of(presets_.begin(), presets_.end(),
                     [&](const Preset& preset) { return preset.options.objectForKey(key) != nullptr; });
}

std::shared_ptr<UIImage> WallpaperBundle::imageNamed(const std::string& name) const {
  const auto file = name.empty() ? std::nullopt : bundle_->pathForResource(name, "png");
  return file ? UIImage::imageWithContentsOfFile(*file) : nullptr;
}

std::shared_ptr<UIImage> WallpaperBundle::presetPicture(int number) const {
  const auto& options = preset(number).options;
  const auto* value = options.objectForKey(kWallpaperThumbnailNameKey);
  const auto* name = value ? std::get_if<std::string>(value) : nullptr;
  auto image = name ? imageNamed(*name) : nullptr;
  if (!image) {
    const auto thrown = thrownBy([&] { image = class_.thumbnailImageForOptions(options); });
    if (!thrown.empty()) {
      NSLog("wallpaper %@: thumbnailImageForOptions throws: %@. Preset %d is shown without a picture", name_,
            thrown, number);
    }
  }
  return image;
}

std::shared_ptr<UIImage> WallpaperBundle::picture() const {
  for (const auto& name : {representativeName_, thumbnailName_}) {
    if (auto image = imageNamed(name)) {
      return image;
    }
  }
  return presetPicture(1);
}

std::optional<std::filesystem::path> WallpaperBundle::chime() const {
  const auto file = bundle_->infoString(kChimeFileKey);
  return file.empty() ? std::nullopt : std::optional(path() / file);
}

std::shared_ptr<Wallpaper> WallpaperBundle::build(CGSize size, std::string* error) const {
  // Another bundle may have a class of the same name.
  NSBundle::registerClass(class_.name, bundle_);
  std::shared_ptr<Wallpaper> wallpaper;
  std::string cause = thrownBy([&] { wallpaper = class_.initWithFrame({{0, 0}, size}); });
  if (!cause.empty()) {
    cause = "its initWithFrame throws: " + cause;
  } else {
    wallpaper = GuardedWallpaper::guard(std::move(wallpaper), name_, &cause);
  }
  if (!cause.empty()) {
    *error = fmt::format("the wallpaper {} cannot be shown at {} x {} pixels: {}", name_, size.width,
                         size.height, cause);
    return nullptr;
  }
  return wallpaper;
}

}  // namespace nivlo
