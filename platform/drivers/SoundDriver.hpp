// Plays short sounds.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>

namespace nivlo {

/// A sound that plays. Destroying it ends the sound; its completion is then not called any more.
class SoundPlayback {
 public:
  virtual ~SoundPlayback() = default;
};

/// Main thread only.
class SoundDriver {
 public:
  virtual ~SoundDriver() = default;

  /// Plays the file once, without waiting. `completed` is called once, on the main thread, after this has
  /// returned: when the sound has ended, or could not be played, or has taken longer than it can. It may
  /// destroy the playback.
  virtual std::unique_ptr<SoundPlayback> play(const std::filesystem::path& file,
                                              std::function<void()> completed) = 0;
};

}  // namespace nivlo
