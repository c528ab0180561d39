// Plays sounds with GStreamer.
#pragma once

#include <chrono>
#include <memory>

#include "platform/drivers/SoundDriver.hpp"

namespace nivlo {

/// The time beyond its own length after which a sound is given up.
inline constexpr std::chrono::seconds kSoundGrace{5};

/// Makes a driver that plays any format that GStreamer decodes. GStreamer is initialised by the first sound.
///
/// Without a sound card and a sound server, a sound is silent but takes its time. A sound that takes longer
/// than its length and `grace`, for example because the sound server does not respond, is given up. Each kind
/// of trouble is logged once in the driver's life. The main thread must run the loop of GLib's default
/// context. Never null.
std::unique_ptr<SoundDriver> makeGStreamerSound(std::chrono::milliseconds grace = kSoundGrace);

}  // namespace nivlo
