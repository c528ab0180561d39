// One sound that plays.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <set>
#include <string>

#include <gst/gst.h>

#include "linux/handles/OwnedSource.hpp"
#include "platform/Foundation/SerialWorker.hpp"
#include "platform/drivers/SoundDriver.hpp"

namespace nivlo {

/// What all playbacks of a driver have in common.
struct PlaybacksInCommon {
  std::set<std::string> reported;  ///< what trouble was reported about; main thread only
  /// A sound server that does not answer holds up a pipeline's changes of state for half a minute: they are
  /// made here.
  SerialWorker stateChanges{"sound"};
};

/// For the main thread only, whose GLib default context tells it how the sound fares.
class GStreamerPlayback : public SoundPlayback {
 public:
  GStreamerPlayback(const std::filesystem::path& file, std::function<void()> completed,
                    std::chrono::milliseconds grace, std::shared_ptr<PlaybacksInCommon> common);
  ~GStreamerPlayback() override;
  GStreamerPlayback(const GStreamerPlayback&) = delete;
  GStreamerPlayback& operator=(const GStreamerPlayback&) = delete;

 private:
  /// Returns the cause where it cannot be built.
  std::string buildPipeline();
  void watchBus();
  void handle(GstMessage* message);
  /// Replaces the earlier deadline.
  void giveUpAfter(std::chrono::milliseconds delay, std::string cause);
  void expectEndInTime();
  void stop();
  /// This may be gone when it returns.
  void complete();
  void fail(const std::string& cause);
  void reportOnce(const std::string& subject, const std::string& trouble);

  std::filesystem::path file_;
  std::function<void()> completed_;
  std::chrono::milliseconds grace_;
  std::shared_ptr<PlaybacksInCommon> common_;
  std::shared_ptr<GstElement> pipeline_;
  OwnedSource busWatch_;
  OwnedSource deadline_;
  std::string causeAtDeadline_;
};

}  // namespace nivlo
