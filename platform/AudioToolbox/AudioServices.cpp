#include "platform/AudioToolbox/AudioServices.hpp"

#include <filesystem>
#include <map>
#include <memory>
#include <utility>

#include "platform/drivers/Drivers.hpp"

namespace nivlo {

namespace {

struct SystemSound {
  std::filesystem::path file;
  AudioServicesSystemSoundCompletionProc completion = nullptr;
  void* clientData = nullptr;
  std::map<std::uint64_t, std::unique_ptr<SoundPlayback>> playbacks;
};

std::map<SystemSoundID, SystemSound>& systemSounds() {
  static std::map<SystemSoundID, SystemSound> sounds;
  return sounds;
}

SystemSound* soundWithID(SystemSoundID soundID) {
  const auto found = systemSounds().find(soundID);
  return found == systemSounds().end() ? nullptr : &found->second;
}

/// The completion may dispose of the sound, so this must not touch the sound after calling it.
void finish(SystemSoundID soundID, std::uint64_t playback) {
  auto* sound = soundWithID(soundID);
  if (!sound) {
    return;
  }
  sound->playbacks.erase(playback);
  if (sound->completion) {
    sound->completion(soundID, sound->clientData);
  }
}

}  // namespace

OSStatus AudioServicesCreateSystemSoundID(const std::optional<NSURL>& fileURL, SystemSoundID* soundID) {
  static SystemSoundID last = 0;
  auto file = fileURL ? fileURL->filePath() : std::nullopt;
  if (!file) {
    *soundID = 0;
    return kAudioServicesSystemSoundUnspecifiedError;
  }
  *soundID = ++last;
  systemSounds()[last].file = *std::move(file);
  return kAudioServicesNoError;
}

OSStatus AudioServicesAddSystemSoundCompletion(SystemSoundID soundID, std::nullptr_t, std::nullptr_t,
                                               AudioServicesSystemSoundCompletionProc completion,
                                               void* clientData) {
  auto* sound = soundWithID(soundID);
  if (!sound) {
    return kAudioServicesSystemSoundUnspecifiedError;
  }
  sound->completion = completion;
  sound->clientData = clientData;
  return kAudioServicesNoError;
}

void AudioServicesRemoveSystemSoundCompletion(SystemSoundID soundID) {
  AudioServicesAddSystemSoundCompletion(soundID, nullptr, nullptr, nullptr, nullptr);
}

OSStatus AudioServicesPlaySystemSound(SystemSoundID soundID) {
  static std::uint64_t last = 0;
  auto* sound = soundWithID(soundID);
  const auto& driver = drivers().sound;
  if (!sound || !driver) {
    return kAudioServicesSystemSoundUnspecifiedError;
  }
  const auto playback = ++last;
  sound->playbacks[playback] = driver->play(sound->file, [soundID, playback] { finish(soundID, playback); });
  return kAudioServicesNoError;
}

OSStatus AudioServicesDisposeSystemSoundID(SystemSoundID soundID) {
  return systemSounds().erase(soundID) ? kAudioServicesNoError : kAudioServicesSystemSoundUnspecifiedError;
}

}  // namespace nivlo
