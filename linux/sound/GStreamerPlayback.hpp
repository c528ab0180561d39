// A sound that GStreamer plays.
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

/// State that the playbacks of a driver share.
struct PlaybacksInCommon {
  std::set<std::string> reported;  ///< the subjects that trouble was logged about; main thread only
  /// Changes the states of pipelines. With a sound server that does not respond, that takes half a minute.
  SerialWorker stateChanges{"sound"};
};

/// Plays a file once, from the construction on. GLib's default context brings the news about it. Main thread
/// only.
class GStreamerPlayback : public SoundPlayback {
 public:
  /// `grace` is how much longer than its length the sound may take.
  GStreamerPlayback(const std::filesystem::path& file, std::function<void()> completed,
                    std::chrono::milliseconds grace, std::shared_ptr<PlaybacksInCommon> common);
  ~GStreamerPlayback() override;
  GStreamerPlayback(const GStreamerPlayback&) = delete;
  GStreamerPlayback& operator=(const GStreamerPlayback&) = delete;

 private:
  /// Returns the cause when that fails, else an empty text.
  std::string buildPipeline();
  void watchBus();
  void handle(GstMessage* message);
  /// Has the sound given up after the delay, for this cause. Replaces the earlier deadline.
  void giveUpAfter(std::chrono::milliseconds delay, std::string cause);
  void expectEndInTime();
  void stop();
  /// Stops the sound and reports its end. The object may be destroyed when these two return.
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
