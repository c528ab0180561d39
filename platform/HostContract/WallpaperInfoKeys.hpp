// The keys of a bundle's Info.plist that the host reads. All values are strings.
#pragma once

namespace nivlo {

/// The wallpaper's class, as it was given to NIVLO_EXPORT_WALLPAPER. Required.
inline constexpr auto kPrincipalClassKey = "NSPrincipalClass";
/// The file name of the shared object that holds the class, beside Info.plist. Required.
inline constexpr auto kExecutableKey = "CFBundleExecutable";
/// The wallpaper's display name, for example "Tide". `--bundle` also finds an installed wallpaper by it.
/// The folder's name without ".bundle" stands in for it.
inline constexpr auto kBundleNameKey = "CFBundleName";
/// The file name of the sound that 'nivlo chime' plays, beside Info.plist. Without it the wallpaper has no
/// chime.
inline constexpr auto kChimeFileKey = "NivloChimeFile";

}  // namespace nivlo
