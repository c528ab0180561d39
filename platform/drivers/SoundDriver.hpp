// The driver that plays short sounds.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>

namespace nivlo {

/// A sound that is being played. Destroying it stops the sound, and its completion is not called any more.
class SoundPlayback {
 public:
  virtual ~SoundPlayback() = default;
};

/// Plays sounds. Main thread only.
class SoundDriver {
 public:
  virtual ~SoundDriver() = default;

  /// Starts playing the file and returns at once. `completed` is called once, on the main thread and after
  /// this has returned: when the sound has ended, when it turns out that it cannot be played, or when it
  /// takes longer than it should. It may destroy the playback.
  virtual std::unique_ptr<SoundPlayback> play(const std::filesystem::path& file,
                                              std::function<void()> completed) = 0;
};

}  // namespace nivlo
