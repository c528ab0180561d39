#include "linux/sound/GStreamerPlayback.hpp"

#include <utility>

#include "linux/handles/Owned.hpp"
#include "platform/Foundation/NSLog.hpp"

namespace nivlo {

namespace {

// The length of a sound whose file does not tell it.
constexpr std::chrono::seconds kLongestSound{30};
constexpr auto kStalled = "it did not end in time; does the sound server respond?";

using Error = Owned<GError, g_error_free>;
using ErrorParser = void (*)(GstMessage*, GError**, gchar**);

std::string textOf(const Error& error) { return error ? error->message : "unknown error"; }

Error errorIn(GstMessage* message, ErrorParser parse) {
  GError* error = nullptr;
  parse(message, &error, nullptr);
  return Error(error);
}

bool isMissingDecoder(const Error& error) {
  return error && (g_error_matches(error.get(), GST_CORE_ERROR, GST_CORE_ERROR_MISSING_PLUGIN) ||
                   g_error_matches(error.get(), GST_STREAM_ERROR, GST_STREAM_ERROR_CODEC_NOT_FOUND));
}

std::string causeWithRemedy(const Error& error) {
  return textOf(error) + (isMissingDecoder(error)
                              ? "; install gstreamer1.0-plugins-good and gstreamer1.0-libav"
                              : "; is the file intact, and is a sound server running?");
}

/// The sink that finds a sound server or a sound card by itself, and plays silently in real time when there
/// is none. When GStreamer lacks it, a sink that is always silent; null when it lacks that too.
GstElement* makeSink() {
  if (auto* sink = gst_element_factory_make("autoaudiosink", nullptr)) {
    return sink;
  }
  auto* sink = gst_element_factory_make("fakesink", nullptr);
  if (sink) {
    g_object_set(sink, "sync", TRUE, nullptr);
  }
  return sink;
}

std::shared_ptr<GstElement> owned(GstElement* element) {
  gst_object_ref_sink(element);
  return {element, FreedBy<gst_object_unref>()};
}

void changeStateLater(const std::shared_ptr<PlaybacksInCommon>& common,
                      const std::shared_ptr<GstElement>& pipeline, GstState state) {
  common->stateChanges.post([pipeline, state] { gst_element_set_state(pipeline.get(), state); });
}

}  // namespace

GStreamerPlayback::GStreamerPlayback(const std::filesystem::path& file, std::function<void()> completed,
                                     std::chrono::milliseconds grace,
                                     std::shared_ptr<PlaybacksInCommon> common)
    : file_(file), completed_(std::move(completed)), grace_(grace), common_(std::move(common)) {
  if (auto cause = buildPipeline(); !cause.empty()) {
    giveUpAfter(std::chrono::milliseconds(0), std::move(cause));
    return;
  }
  watchBus();
  giveUpAfter(grace_, kStalled);
  changeStateLater(common_, pipeline_, GST_STATE_PLAYING);
}

GStreamerPlayback::~GStreamerPlayback() { stop(); }

std::string GStreamerPlayback::buildPipeline() {
  GError* error = nullptr;
  if (!gst_init_check(nullptr, nullptr, &error)) {
    return "GStreamer cannot be initialised: " + textOf(Error(error));
  }
  const Owned<gchar, g_free> uri(gst_filename_to_uri(file_.c_str(), &error));
  if (!uri) {
    return textOf(Error(error));
  }
  auto* playbin = gst_element_factory_make("playbin", nullptr);
  if (!playbin) {
    return "GStreamer's playbin is missing; install gstreamer1.0-plugins-base";
  }
  pipeline_ = owned(playbin);
  gst_util_set_object_arg(G_OBJECT(playbin), "flags", "audio+soft-volume");
  g_object_set(playbin, "uri", uri.get(), "audio-sink", makeSink(), nullptr);
  return {};
}

void GStreamerPlayback::watchBus() {
  const Owned<GstBus, gst_object_unref> bus(gst_element_get_bus(pipeline_.get()));
  busWatch_.reset(gst_bus_create_watch(bus.get()));
  const GstBusFunc handler = [](GstBus*, GstMessage* message, gpointer self) -> gboolean {
    static_cast<GStreamerPlayback*>(self)->handle(message);
    return G_SOURCE_CONTINUE;
  };
  g_source_set_callback(busWatch_.get(), G_SOURCE_FUNC(handler), this, nullptr);
  g_source_attach(busWatch_.get(), nullptr);
}

void GStreamerPlayback::handle(GstMessage* message) {
  switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_ASYNC_DONE:
      expectEndInTime();
      break;
    case GST_MESSAGE_WARNING:
      reportOnce("silence", "sounds may stay silent: " + textOf(errorIn(message, gst_message_parse_warning)) +
                                "; is a sound server running?");
      break;
    case GST_MESSAGE_ERROR:
      fail(causeWithRemedy(errorIn(message, gst_message_parse_error)));
      break;
    case GST_MESSAGE_EOS:
      complete();
      break;
    default:
      break;
  }
}

void GStreamerPlayback::giveUpAfter(std::chrono::milliseconds delay, std::string cause) {
  causeAtDeadline_ = std::move(cause);
  deadline_.reset(g_timeout_source_new(static_cast<guint>(delay.count())));
  const GSourceFunc handler = [](gpointer self) -> gboolean {
    auto* playback = static_cast<GStreamerPlayback*>(self);
    playback->fail(std::exchange(playback->causeAtDeadline_, {}));
    return G_SOURCE_REMOVE;
  };
  g_source_set_callback(deadline_.get(), handler, this, nullptr);
  g_source_attach(deadline_.get(), nullptr);
}

void GStreamerPlayback::expectEndInTime() {
  gint64 nanoseconds = 0;
  const bool known = gst_element_query_duration(pipeline_.get(), GST_FORMAT_TIME, &nanoseconds);
  const auto length = known ? std::chrono::nanoseconds(nanoseconds) : std::chrono::nanoseconds(kLongestSound);
  giveUpAfter(grace_ + std::chrono::ceil<std::chrono::milliseconds>(length), kStalled);
}

void GStreamerPlayback::stop() {
  busWatch_ = nullptr;
  deadline_ = nullptr;
  if (pipeline_) {
    changeStateLater(common_, pipeline_, GST_STATE_NULL);
    pipeline_ = nullptr;
  }
}

void GStreamerPlayback::complete() {
  stop();
  const auto completed = std::exchange(completed_, nullptr);
  completed();
}

void GStreamerPlayback::fail(const std::string& cause) {
  // Once for each file, whatever the cause: which of several causes comes first is a matter of chance.
  reportOnce(file_.native(), "cannot play " + file_.native() + ": " + cause);
  complete();
}

void GStreamerPlayback::reportOnce(const std::string& subject, const std::string& trouble) {
  if (common_->reported.insert(subject).second) {
    NSLog("sound: %@", trouble);
  }
}

}  // namespace nivlo
