// System sounds: short sounds that a wallpaper plays by their identifiers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "platform/Foundation/NSURL.hpp"

namespace nivlo {

/// A result code: kAudioServicesNoError, or one of the errors below.
using OSStatus = std::int32_t;
/// Identifies a sound. Never 0, and never used for a second sound while the process lives.
using SystemSoundID = std::uint32_t;
/// Is told that a sound has ended. `clientData` is what was given at the registration.
using AudioServicesSystemSoundCompletionProc = void (*)(SystemSoundID soundID, void* clientData);

inline constexpr OSStatus kAudioServicesNoError = 0;
/// There is no such sound, or the machine cannot play any.
inline constexpr OSStatus kAudioServicesSystemSoundUnspecifiedError = -1500;

// Call all of these on the main thread only.

/// Makes a sound from a file and writes its identifier to `*soundID`. The file is not opened yet, so a
/// missing or broken one shows only when the sound is played. The sound exists until it is disposed of.
/// Writes 0 and returns an error when the URL is absent or is not a file URL.
OSStatus AudioServicesCreateSystemSoundID(const std::optional<NSURL>& fileURL, SystemSoundID* soundID);

/// Has `completion` called on the main thread each time the sound has been played to its end or could not be
/// played. Replaces an earlier registration. What `clientData` points to must outlive the registration. The
/// run loop and its mode are always the main thread's own, so both are null. Fails for an unknown identifier.
OSStatus AudioServicesAddSystemSoundCompletion(SystemSoundID soundID, std::nullptr_t runLoop,
                                               std::nullptr_t mode,
                                               AudioServicesSystemSoundCompletionProc completion,
                                               void* clientData);

/// Removes the registration. A sound that is playing goes on, but its end is not reported. Does nothing where
/// nothing was registered.
void AudioServicesRemoveSystemSoundCompletion(SystemSoundID soundID);

/// Starts playing the sound and returns at once. A sound that is still playing then plays a second time over
/// the first. Fails for an unknown identifier and on a machine without a sound driver; trouble with the file
/// or the sound server is logged, and reported as completion.
OSStatus AudioServicesPlaySystemSound(SystemSoundID soundID);

/// Stops the sound, removes its registration and makes its identifier invalid. May be called from the
/// completion. Fails for an unknown identifier.
OSStatus AudioServicesDisposeSystemSoundID(SystemSoundID soundID);

}  // namespace nivlo
