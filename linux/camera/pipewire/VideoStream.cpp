#include "linux/camera/pipewire/VideoStream.hpp"

#include <array>
#include <cerrno>
#include <utility>

#include <spa/buffer/meta.h>
#include <spa/param/buffers.h>
#include <spa/param/param.h>
#include <spa/pod/builder.h>

namespace nivlo {
namespace {

// Consumers hold up to three frames, and a camera needs a few more to fill in the meantime.
constexpr int kWantedBuffers = 8;

const spa_pod* wantedBuffers(spa_pod_builder& builder) {
  constexpr int kTypes = (1 << SPA_DATA_MemFd) | (1 << SPA_DATA_DmaBuf) | (1 << SPA_DATA_MemPtr);
  return static_cast<const spa_pod*>(
      spa_pod_builder_add_object(&builder, SPA_TYPE_OBJECT_ParamBuffers, SPA_PARAM_Buffers,
                                 SPA_PARAM_BUFFERS_buffers, SPA_POD_CHOICE_RANGE_Int(kWantedBuffers, 1, 32),
                                 SPA_PARAM_BUFFERS_dataType, SPA_POD_CHOICE_FLAGS_Int(kTypes)));
}

const spa_pod* wantedMeta(spa_pod_builder& builder, spa_meta_type type, std::size_t size) {
  return static_cast<const spa_pod*>(spa_pod_builder_add_object(
      &builder, SPA_TYPE_OBJECT_ParamMeta, SPA_PARAM_Meta, SPA_PARAM_META_type, SPA_POD_Id(type),
      SPA_PARAM_META_size, SPA_POD_Int(static_cast<int32_t>(size))));
}

}  // namespace

const pw_stream_events VideoStream::kEvents = [] {
  pw_stream_events events{};
  events.version = PW_VERSION_STREAM_EVENTS;
  events.state_changed = [](void* self, pw_stream_state, pw_stream_state state, const char*) {
    static_cast<VideoStream*>(self)->stateChanged(state);
  };
  events.param_changed = [](void* self, uint32_t id, const spa_pod* param) {
    if (id == SPA_PARAM_Format && param != nullptr) {
      static_cast<VideoStream*>(self)->formatChanged(param);
    }
  };
  events.add_buffer = [](void* data, pw_buffer* buffer) {
    auto* self = static_cast<VideoStream*>(data);
    if (!self->loans_.add(buffer)) {
      self->reportOnce("its buffers cannot be read");
    }
  };
  events.remove_buffer = [](void* self, pw_buffer* buffer) {
    static_cast<VideoStream*>(self)->loans_.remove(buffer);
  };
  events.process = [](void* self) { static_cast<VideoStream*>(self)->process(); };
  return events;
}();

VideoStream::VideoStream(PipeWireLoop& loop, pw_core* core, const CameraNode& camera, Callbacks callbacks)
    : loop_(loop), callbacks_(std::move(callbacks)), reader_(camera.rotation) {
  connect(core, camera);
}

VideoStream::~VideoStream() {
  listener_.reset();
  if (!stream_) {
    return;
  }
  pw_stream_disconnect(stream_.get());
  // PipeWire's data thread has queued calls on the loop that point to the stream. An invocation on the loop's
  // own thread runs them before the stream is destroyed.
  pw_loop_invoke(loop_.get(), nullptr, 0, nullptr, 0, false, nullptr);
  stream_.reset();
}

void VideoStream::connect(pw_core* core, const CameraNode& camera) {
  stream_.reset(pw_stream_new(
      core, "nivlo",
      pw_properties_new(PW_KEY_NODE_NAME, "nivlo", PW_KEY_MEDIA_TYPE, "Video", PW_KEY_MEDIA_CATEGORY,
                        "Capture", PW_KEY_MEDIA_ROLE, "Camera", PW_KEY_TARGET_OBJECT,
                        camera.serial.empty() ? camera.name.c_str() : camera.serial.c_str(), nullptr)));
  if (!stream_) {
    callbacks_.failed();
    return;
  }
  pw_stream_add_listener(stream_.get(), listener_.claim(), &kEvents, this);
  std::array<uint8_t, 4096> space{};
  spa_pod_builder builder = SPA_POD_BUILDER_INIT(space.data(), space.size());
  std::vector<const spa_pod*> formats = formatsToAskFor(builder);
  // Without DONT_RECONNECT the session manager would link us to any other camera when ours is unplugged.
  const auto flags = static_cast<pw_stream_flags>(PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_DONT_RECONNECT);
  if (pw_stream_connect(stream_.get(), PW_DIRECTION_INPUT, PW_ID_ANY, flags, formats.data(),
                        static_cast<uint32_t>(formats.size())) != 0) {
    callbacks_.failed();
  }
}

void VideoStream::stateChanged(pw_stream_state state) {
  if (state == PW_STREAM_STATE_ERROR || state == PW_STREAM_STATE_UNCONNECTED) {
    callbacks_.failed();
  }
}

void VideoStream::formatChanged(const spa_pod* format) {
  const std::optional<StreamFormat> parsed = parseFormat(format);
  if (!parsed) {
    reportOnce("it chose a format that cannot be read");
    pw_stream_set_error(stream_.get(), -EINVAL, "unsupported format");
    return;
  }
  reader_.setFormat(*parsed);
  std::array<uint8_t, 1024> space{};
  spa_pod_builder builder = SPA_POD_BUILDER_INIT(space.data(), space.size());
  std::array<const spa_pod*, 3> params{
      wantedBuffers(builder), wantedMeta(builder, SPA_META_Header, sizeof(spa_meta_header)),
      wantedMeta(builder, SPA_META_VideoTransform, sizeof(spa_meta_videotransform))};
  pw_stream_update_params(stream_.get(), params.data(), params.size());
}

void VideoStream::process() {
  for (pw_buffer* returned : loans_.takeReturned()) {
    pw_stream_queue_buffer(stream_.get(), returned);
  }
  pw_buffer* newest = nullptr;
  while (pw_buffer* buffer = pw_stream_dequeue_buffer(stream_.get())) {
    if (newest != nullptr) {
      pw_stream_queue_buffer(stream_.get(), newest);
    }
    newest = buffer;
  }
  if (newest == nullptr) {
    return;
  }

  StreamBuffer& buffer = BufferLoans::handleOf(*newest);
  const BufferReader::Result result = reader_.read(buffer, loans_);
  if (!buffer.isLent) {
    pw_stream_queue_buffer(stream_.get(), newest);
  }
  if (result.defect != nullptr) {
    reportOnce(result.defect);
  }
  if (result.frame) {
    callbacks_.frame(result.frame);
  }
}

void VideoStream::reportOnce(const std::string& cause) {
  if (!reported_) {
    callbacks_.defective(cause);
  }
  reported_ = true;
}

}  // namespace nivlo
