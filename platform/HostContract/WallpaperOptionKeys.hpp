// The words that the host and its wallpapers share: option keys, the values of options, and variants.
#pragma once

namespace nivlo {

// Keys of a set of options. A wallpaper may use any others for itself; the host knows only these. An option
// key that none of a wallpaper's presets names is one that the wallpaper does not understand: the host then
// offers no such choice to the user.

/// A string: the picture of the preset, a PNG resource of the bundle, named without its extension. For a
/// preset without it the host asks thumbnailImageForOptions.
inline constexpr auto kWallpaperThumbnailNameKey = "kSBUIMagicWallpaperThumbnailNameKey";
/// A boolean: whether the wallpaper offers the codes that it sees. `--qr` and 'nivlo ctl scan' set it.
inline constexpr auto kScansCodesKey = "qr";
/// A string, kCameraPositionBack or kCameraPositionFront. `--camera` and 'nivlo ctl swap' set it.
inline constexpr auto kCameraPositionKey = "cameraPosition";
inline constexpr auto kCameraPositionBack = "back";
inline constexpr auto kCameraPositionFront = "front";

// The arguments of setWallpaperVariant: the colour scheme that the user prefers on this desktop.
inline constexpr long kWallpaperVariantLight = 0;
inline constexpr long kWallpaperVariantDark = 1;

}  // namespace nivlo
