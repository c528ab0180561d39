#include "bundle/NivloWallpaper/NivloWallpaper.hpp"
#include "platform/AudioToolbox/AudioServices.hpp"
#include "platform/Foundation/NSBundle.hpp"

namespace nivlo {

namespace {

std::optional<NSURL> chimeURL() {
  const auto bundle = NSBundle::bundleForClass("NivloWallpaper");
  const auto path = bundle ? bundle->pathForResource("hourlychimebeg", "m4a") : std::nullopt;
  return path ? std::optional(NSURL::fileURLWithPath(*path)) : std::nullopt;
}

}  // namespace

void completionCallback(std::uint32_t, void* clientData) {
  static_cast<NivloWallpaper*>(clientData)->stopPlaySound();
}

void NivloWallpaper::playSound3() {
  AudioServicesCreateSystemSoundID(chimeURL(), &soundFileObject_);
  AudioServicesAddSystemSoundCompletion(soundFileObject_, nullptr, nullptr, completionCallback, this);
  chimes_.push_back(soundFileObject_);
  AudioServicesPlaySystemSound(soundFileObject_);
}

void NivloWallpaper::stopPlaySound() {
  if (!isShaking()) {
    return;
  }
  AudioServicesDisposeSystemSoundID(soundFileObject_);
  setIsShaking(false);
}

void NivloWallpaper::forgetChimes() {
  for (const auto chime : chimes_) {
    AudioServicesRemoveSystemSoundCompletion(chime);
  }
  chimes_.clear();
}

}  // namespace nivlo
