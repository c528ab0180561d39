#include "linux/camera/files/FilmPipeline.hpp"

#include <chrono>
#include <utility>

#include <gst/app/gstappsink.h>

#include "linux/camera/ErrorMessage.hpp"
#include "linux/camera/files/FilmFrame.hpp"

namespace nivlo {
namespace {

constexpr GstClockTime kFirstPictureTimeout = 5 * GST_SECOND;
// A film of a single picture has no duration. One round of it takes at least this long.
constexpr std::chrono::milliseconds kShortestRound{100};
constexpr const char* kPipeline =
    "uridecodebin name=film caps=video/x-raw(ANY) expose-all-streams=false ! videoconvert ! "
    "appsink name=sink caps=\"video/x-raw,format=(string){I420,NV12}\" max-buffers=2 drop=true";

using Message = Owned<GstMessage, gst_message_unref>;

Message awaitMessage(GstBus* bus, GstClockTime timeout, int types) {
  return Message(gst_bus_timed_pop_filtered(bus, timeout, static_cast<GstMessageType>(types)));
}

std::string problemIn(const Message& message) {
  GError* error = nullptr;
  gst_message_parse_error(message.get(), &error, nullptr);
  return takeMessage(error);
}

GstFlowReturn handleSample(GstAppSink* sink, gpointer handler) {
  const Owned<GstSample, gst_sample_unref> sample(gst_app_sink_pull_sample(sink));
  if (!sample) {
    return GST_FLOW_EOS;
  }
  const Owned<GstPad, gst_object_unref> pad(gst_element_get_static_pad(GST_ELEMENT(sink), "sink"));
  auto frame = frameFromSample(sample.get(), rotationFromTags(pad.get()));
  if (frame) {
    (*static_cast<CameraFrameHandler*>(handler))(std::move(frame));
  }
  return GST_FLOW_OK;
}

}  // namespace

FilmPipeline::FilmPipeline(const std::filesystem::path& path, CameraFrameHandler onFrame)
    : onFrame_(std::move(onFrame)) {
  GError* error = nullptr;
  if (!gst_init_check(nullptr, nullptr, &error)) {
    problem_ = "GStreamer cannot be started: " + takeMessage(error);
    return;
  }
  pipeline_.reset(gst_parse_launch(kPipeline, &error));
  const Owned<gchar, g_free> uri(error ? nullptr : gst_filename_to_uri(path.c_str(), &error));
  if (!uri) {
    problem_ = takeMessage(error);
    return;
  }
  bus_.reset(gst_element_get_bus(pipeline_.get()));
  const Element film(gst_bin_get_by_name(GST_BIN(pipeline_.get()), "film"));
  g_object_set(film.get(), "uri", uri.get(), nullptr);
  if (!onFrame_) {
    return;
  }
  const Element sink(gst_bin_get_by_name(GST_BIN(pipeline_.get()), "sink"));
  GstAppSinkCallbacks callbacks{};
  callbacks.new_sample = handleSample;
  gst_app_sink_set_callbacks(GST_APP_SINK(sink.get()), &callbacks, &onFrame_, nullptr);
}

FilmPipeline::~FilmPipeline() {
  if (pipeline_) {
    gst_element_set_state(pipeline_.get(), GST_STATE_NULL);
  }
}

std::string FilmPipeline::prepare() {
  if (!problem_.empty()) {
    return problem_;
  }
  gst_element_set_state(pipeline_.get(), GST_STATE_PAUSED);
  return awaitFirstPicture();
}

std::string FilmPipeline::awaitFirstPicture() {
  const auto message = awaitMessage(bus_.get(), kFirstPictureTimeout,
                                    GST_MESSAGE_ASYNC_DONE | GST_MESSAGE_ERROR | GST_MESSAGE_APPLICATION);
  if (!message) {
    return "no picture could be decoded within 5 seconds";
  }
  return GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_ERROR ? problemIn(message) : std::string();
}

std::string FilmPipeline::play(const std::stop_token& stop) {
  if (!problem_.empty()) {
    return problem_;
  }
  // An application message ends any wait on the bus at once.
  const std::stop_callback interrupt(stop, [this] {
    gst_bus_post(bus_.get(), gst_message_new_application(nullptr, gst_structure_new_empty("stop")));
  });
  if (auto problem = prepare(); !problem.empty() || stop.stop_requested()) {
    return problem;
  }
  if (!rewind(GST_SEEK_FLAG_FLUSH)) {
    return "it cannot be started again from its beginning";
  }
  gst_element_set_state(pipeline_.get(), GST_STATE_PLAYING);
  return playRounds(stop);
}

std::string FilmPipeline::playRounds(const std::stop_token& stop) {
  auto begin = std::chrono::steady_clock::now();
  while (!stop.stop_requested()) {
    const auto message = awaitMessage(
        bus_.get(), GST_CLOCK_TIME_NONE,
        GST_MESSAGE_SEGMENT_DONE | GST_MESSAGE_EOS | GST_MESSAGE_ERROR | GST_MESSAGE_APPLICATION);
    if (!message || GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_APPLICATION) {
      return {};
    }
    if (GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_ERROR) {
      return problemIn(message);
    }
    const auto rest = kShortestRound - (std::chrono::steady_clock::now() - begin);
    if (rest.count() > 0) {
      awaitMessage(bus_.get(), std::chrono::nanoseconds(rest).count(), GST_MESSAGE_APPLICATION);
    }
    begin = std::chrono::steady_clock::now();
    // A demuxer that supports segments goes on without a gap. The others end the stream and have to be
    // flushed, and so has a film of a single picture, which never left its beginning.
    const bool goesOn = GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_SEGMENT_DONE && rest.count() <= 0;
    if (!rewind(goesOn ? GST_SEEK_FLAG_NONE : GST_SEEK_FLAG_FLUSH)) {
      return "it cannot be started again from its beginning";
    }
  }
  return {};
}

bool FilmPipeline::rewind(GstSeekFlags flags) {
  return gst_element_seek_simple(pipeline_.get(), GST_FORMAT_TIME,
                                 static_cast<GstSeekFlags>(flags | GST_SEEK_FLAG_SEGMENT), 0);
}

}  // namespace nivlo
