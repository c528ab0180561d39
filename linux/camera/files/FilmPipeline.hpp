// One attempt at playing a film with GStreamer.
#pragma once

#include <filesystem>
#include <stop_token>
#include <string>

#include <gst/gst.h>

#include "linux/handles/Owned.hpp"
#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// Used on one thread. No frame arrives once the destructor has returned.
class FilmPipeline {
 public:
  /// `onFrame` is called on a thread of GStreamer's. It may be empty when only prepare() is of interest.
  FilmPipeline(const std::filesystem::path& path, CameraFrameHandler onFrame);
  ~FilmPipeline();
  FilmPipeline(const FilmPipeline&) = delete;
  FilmPipeline& operator=(const FilmPipeline&) = delete;

  /// Decodes up to the first picture and waits at most five seconds for it. Returns why there is none, empty
  /// on success.
  std::string prepare();

  /// Plays the film in a loop until it fails or `stop` is requested. Returns the cause of the failure, empty
  /// when it was stopped.
  std::string play(const std::stop_token& stop);

 private:
  using Element = Owned<GstElement, gst_object_unref>;

  std::string awaitFirstPicture();
  std::string playRounds(const std::stop_token& stop);
  bool rewind(GstSeekFlags flags);

  Element pipeline_;
  Owned<GstBus, gst_object_unref> bus_;
  CameraFrameHandler onFrame_;
  std::string problem_;  ///< why there is no pipeline; empty when there is one
};

}  // namespace nivlo
