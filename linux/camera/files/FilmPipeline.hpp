// One attempt at playing a film with GStreamer.
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <stop_token>
#include <string>

#include <gst/gst.h>

#include "platform/drivers/CameraDriver.hpp"

namespace nivlo {

/// Used on one thread. Once the destructor has returned no frame arrives any more.
class FilmPipeline {
 public:
  /// `onFrame` may be empty; otherwise it is called on a thread of GStreamer's.
  FilmPipeline(const std::filesystem::path& path, CameraFrameHandler onFrame);
  ~FilmPipeline();
  FilmPipeline(const FilmPipeline&) = delete;
  FilmPipeline& operator=(const FilmPipeline&) = delete;

  /// Decodes the first picture, within a few seconds. Returns the cause when there is none, else nothing.
  std::string prepare();

  /// Plays the film again and again, until it fails or `stop` is requested. Returns the cause of the failure.
  std::string play(const std::stop_token& stop);

 private:
  struct Unref {
    void operator()(void* object) const { gst_object_unref(object); }
  };

  std::string awaitFirstPicture();
  std::string playRounds(const std::stop_token& stop);
  bool rewind(GstSeekFlags flags);

  std::unique_ptr<GstElement, Unref> pipeline_;
  std::unique_ptr<GstBus, Unref> bus_;
  CameraFrameHandler onFrame_;
  std::string problem_;
};

}  // namespace nivlo
