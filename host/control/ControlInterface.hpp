// What the running program answers to on the session bus.
#pragma once

namespace nivlo {

inline constexpr auto kControlName = "org.nivlo.Wallpaper";
inline constexpr auto kControlPath = "/org/nivlo/Wallpaper";
inline constexpr auto kControlInterface = "org.nivlo.Wallpaper1";

/// Of Change, each key may be absent: "preset" (i, from 1), "scanning" (b), "camera" (s, "back" or "front").
/// GetStatus: "process" (i), "preset" and "presets" (i), "scanning", "animating", "visible", "paused" and
/// "foreground" (b), "frames" shown so far (i), "ageMedian" and "age95" (d, the milliseconds from a picture's
/// capture to the screen, of the last few hundred), and while a camera is open "camera" (a{sv} of "id",
/// "name" and "position").
inline constexpr auto kControlDescription = R"(<node><interface name="org.nivlo.Wallpaper1">
<method name="Pause"/>
<method name="Resume"/>
<method name="Swap"/>
<method name="SetPreset"><arg name="preset" type="i" direction="in"/></method>
<method name="SetScanning"><arg name="scanning" type="b" direction="in"/></method>
<method name="Change"><arg name="changes" type="a{sv}" direction="in"/></method>
<method name="Quit"/>
<method name="GetStatus"><arg name="status" type="a{sv}" direction="out"/></method>
</interface></node>)";

}  // namespace nivlo
