// Sounds played with GStreamer.
#pragma once

#include <chrono>
#include <memory>

#include "platform/drivers/SoundDriver.hpp"

namespace nivlo {

/// How much longer than its length a sound may take to start and to end.
inline constexpr std::chrono::seconds kSoundGrace{5};

/// Uses the GLib default context's loop, which must run on the calling thread. Without a sound card and a
/// sound server, sounds play silently, in their own time. A sound that takes `grace` longer than it can,
/// because a sound server has stopped answering, say, is given up. Each trouble is reported once in the
/// driver's life. GStreamer is started with the first sound.
std::unique_ptr<SoundDriver> makeGStreamerSound(std::chrono::milliseconds grace = kSoundGrace);

}  // namespace nivlo
