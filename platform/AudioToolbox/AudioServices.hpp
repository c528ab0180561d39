// System sounds: short sounds that are played by number.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "platform/Foundation/NSURL.hpp"

namespace nivlo {

using OSStatus = std::int32_t;
/// Never 0; not given out again while the process lives.
using SystemSoundID = std::uint32_t;
using AudioServicesSystemSoundCompletionProc = void (*)(SystemSoundID soundID, void* clientData);

inline constexpr OSStatus kAudioServicesNoError = 0;
/// No sound has this identifier, or no sound can be made or played.
inline constexpr OSStatus kAudioServicesSystemSoundUnspecifiedError = -1500;

// All of these are for the main thread only.

/// Makes a sound of the file; whether it can be played shows when it is. Writes its identifier, or 0, with an
/// error, where there is no file URL. The sound lives until it is disposed of.
OSStatus AudioServicesCreateSystemSoundID(const std::optional<NSURL>& fileURL, SystemSoundID* soundID);

/// Has `completion` called, on the main thread, each time the sound has been played to its end or could not
/// be played. Replaces an earlier registration. `clientData` is handed on as it is: it must outlive the
/// registration. There is no run loop but the main one, in its default mode.
OSStatus AudioServicesAddSystemSoundCompletion(SystemSoundID soundID, std::nullptr_t runLoop,
                                               std::nullptr_t mode,
                                               AudioServicesSystemSoundCompletionProc completion,
                                               void* clientData);

/// A sound that plays goes on, but nobody is told of its end. Nothing happens where none was registered.
void AudioServicesRemoveSystemSoundCompletion(SystemSoundID soundID);

/// Plays the sound once and returns at once. Playing it again before it has ended plays it twice.
OSStatus AudioServicesPlaySystemSound(SystemSoundID soundID);

/// Ends the sound, forgets its completion and makes its identifier invalid. May be called from the
/// completion.
OSStatus AudioServicesDisposeSystemSoundID(SystemSoundID soundID);

}  // namespace nivlo
