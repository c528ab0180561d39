// The D-Bus interface of the running program, on the session bus.
#pragma once

namespace nivlo {

inline constexpr auto kControlName = "org.nivlo.Wallpaper";
inline constexpr auto kControlPath = "/org/nivlo/Wallpaper";
inline constexpr auto kControlInterface = "org.nivlo.Wallpaper1";

/// The interface in D-Bus's own language. These are the values of its properties, the keys of its two
/// dictionaries, and what needs explaining:
///
/// Properties, each change of which is signalled once: "State" is "shown", "starting", "paused" (by the
/// user), "battery" (paused to spare it), "background" (the session is locked, asleep or not on the screen),
/// "awaiting" (the output that "Awaited" names in words, empty otherwise) or "hidden" (by windows). "Slowed"
/// is true while the battery is spared by fewer pictures. "Scanning" is "on" while codes are read, "idle"
/// while they are to be read but there is no picture, "off", "impossible" while the program that reads codes
/// cannot run, or "unsupported" by this wallpaper. "CameraState" is "delivering" while pictures arrive,
/// "waiting" or "unplugged" while none does, "off" while the wallpaper is not shown, "unavailable" if no
/// camera could be opened, or "none" if the wallpaper takes none. "Camera" (its ID), "CameraName" and
/// "CameraPosition" ("back", "front" or "unspecified") are empty while no camera is open. Until the wallpaper
/// is there, and at the program's end, they cannot be read.
///
/// Change: "wallpaper" (s, as SetWallpaper takes it), "preset" (i, counted from 1), "scanning" (b) and
/// "camera" (s, "back" or "front"). Each may be absent; then it stays as it is, but for the preset of another
/// wallpaper, which is the first one.
///
/// SetWallpaper takes a bundle's absolute path or the name of an installed wallpaper. If the wallpaper cannot
/// be shown, the one that is shown stays.
///
/// GetStatus: "process" (i, the process ID); "wallpaper" and "bundle" (s, its name and its folder); "preset"
/// (i) and "presets" (i, how many there are); "takesCamera" (b, whether the wallpaper has a camera to
/// choose); "scanning" (b, absent if the wallpaper does not read codes); "canScan" (b, absent likewise: false
/// while the program that reads codes cannot run, so that none is read); "animating", "visible", "paused" and
/// "foreground" (b); "awaited" (s, the output that must be there first, in words, absent if none is missing);
/// "battery" (s, "slowed" or "paused", only while the battery is spared); "frames" (i, shown so far);
/// "ageMedian" and "age95" (d, the median and the 95th percentile of the milliseconds from capture to screen,
/// over the last few hundred frames); and, only while a camera is open, "camera" (a{sv} with the strings
/// "id", "name", "position" and "state": "delivering" if pictures arrive, "waiting" or "unplugged" if none
/// does).
inline constexpr auto kControlDescription = R"(<node><interface name="org.nivlo.Wallpaper1">
<method name="Pause"/>
<method name="Resume"/>
<method name="Swap"/>
<method name="SetPreset"><arg name="preset" type="i" direction="in"/></method>
<method name="SetWallpaper">
<arg name="wallpaper" type="s" direction="in"/><arg name="preset" type="i" direction="in"/>
</method>
<method name="SetScanning"><arg name="scanning" type="b" direction="in"/></method>
<method name="Change"><arg name="changes" type="a{sv}" direction="in"/></method>
<method name="Quit"/>
<method name="GetStatus"><arg name="status" type="a{sv}" direction="out"/></method>
<property name="Wallpaper" type="s" access="read"/>
<property name="Bundle" type="s" access="read"/>
<property name="Preset" type="i" access="read"/>
<property name="Presets" type="i" access="read"/>
<property name="State" type="s" access="read"/>
<property name="Awaited" type="s" access="read"/>
<property name="Paused" type="b" access="read"/>
<property name="Slowed" type="b" access="read"/>
<property name="Scanning" type="s" access="read"/>
<property name="CameraState" type="s" access="read"/>
<property name="Camera" type="s" access="read"/>
<property name="CameraName" type="s" access="read"/>
<property name="CameraPosition" type="s" access="read"/>
</interface></node>)";

}  // namespace nivlo
