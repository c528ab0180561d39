#include "tests/support/camera/CameraNode.hpp"

#include <array>
#include <cstdio>
#include <cstring>

#include <spa/debug/types.h>
#include <spa/param/video/format-utils.h>
#include <time.h>

namespace nivlo::test {
namespace {

spa_video_format videoFormat(Mode::Format format) {
  static constexpr std::array kFormats{SPA_VIDEO_FORMAT_YUY2, SPA_VIDEO_FORMAT_NV12, SPA_VIDEO_FORMAT_I420,
                                       SPA_VIDEO_FORMAT_BGRx, SPA_VIDEO_FORMAT_RGB,  SPA_VIDEO_FORMAT_ENCODED,
                                       SPA_VIDEO_FORMAT_GRAY8};
  return kFormats.at(static_cast<std::size_t>(format));
}

const spa_pod* describe(spa_pod_builder& builder, const Mode& mode, const Colorimetry& colorimetry) {
  const bool jpeg = mode.format == Mode::Format::MJPEG;
  const spa_rectangle size =
      SPA_RECTANGLE(static_cast<uint32_t>(mode.width), static_cast<uint32_t>(mode.height));
  const spa_fraction rate = SPA_FRACTION(static_cast<uint32_t>(mode.framesPerSecond), 1);
  spa_pod_frame frame{};
  spa_pod_builder_push_object(&builder, &frame, SPA_TYPE_OBJECT_Format, SPA_PARAM_EnumFormat);
  spa_pod_builder_add(&builder, SPA_FORMAT_mediaType, SPA_POD_Id(SPA_MEDIA_TYPE_video),
                      SPA_FORMAT_mediaSubtype,
                      SPA_POD_Id(jpeg ? SPA_MEDIA_SUBTYPE_mjpg : SPA_MEDIA_SUBTYPE_raw), 0);
  if (!jpeg) {
    spa_pod_builder_add(&builder, SPA_FORMAT_VIDEO_format, SPA_POD_Id(videoFormat(mode.format)), 0);
  }
  spa_pod_builder_add(&builder, SPA_FORMAT_VIDEO_size, SPA_POD_Rectangle(&size), SPA_FORMAT_VIDEO_framerate,
                      SPA_POD_Fraction(&rate), 0);
  if (!jpeg && colorimetry.range) {
    spa_pod_builder_add(&builder, SPA_FORMAT_VIDEO_colorRange,
                        SPA_POD_Id(*colorimetry.range == ColorRange::Full ? SPA_VIDEO_COLOR_RANGE_0_255
                                                                          : SPA_VIDEO_COLOR_RANGE_16_235),
                        0);
  }
  if (!jpeg && colorimetry.matrix) {
    spa_pod_builder_add(&builder, SPA_FORMAT_VIDEO_colorMatrix,
                        SPA_POD_Id(*colorimetry.matrix == ColorMatrix::BT709 ? SPA_VIDEO_COLOR_MATRIX_BT709
                                                                             : SPA_VIDEO_COLOR_MATRIX_BT601),
                        0);
  }
  return static_cast<const spa_pod*>(spa_pod_builder_pop(&builder, &frame));
}

bool sizeAndRateAre(const spa_rectangle& size, const spa_fraction& rate, const Mode& mode) {
  return size.width == static_cast<uint32_t>(mode.width) &&
         size.height == static_cast<uint32_t>(mode.height) &&
         rate.num == static_cast<uint32_t>(mode.framesPerSecond) && rate.denom == 1;
}

bool isChosen(const spa_pod* format, const Mode& mode) {
  uint32_t type = 0;
  uint32_t subtype = 0;
  if (spa_format_parse(format, &type, &subtype) < 0) {
    return false;
  }
  if (subtype == SPA_MEDIA_SUBTYPE_mjpg) {
    spa_video_info_mjpg info{};
    return mode.format == Mode::Format::MJPEG && spa_format_video_mjpg_parse(format, &info) >= 0 &&
           sizeAndRateAre(info.size, info.framerate, mode);
  }
  spa_video_info_raw info{};
  return spa_format_video_raw_parse(format, &info) >= 0 && info.format == videoFormat(mode.format) &&
         sizeAndRateAre(info.size, info.framerate, mode);
}

const spa_pod* describeMeta(spa_pod_builder& builder, spa_meta_type type, std::size_t size) {
  return static_cast<const spa_pod*>(spa_pod_builder_add_object(
      &builder, SPA_TYPE_OBJECT_ParamMeta, SPA_PARAM_Meta, SPA_PARAM_META_type, SPA_POD_Id(type),
      SPA_PARAM_META_size, SPA_POD_Int(static_cast<int32_t>(size))));
}

template <typename T>
T* findMeta(spa_buffer* buffer, spa_meta_type type) {
  return static_cast<T*>(spa_buffer_find_meta_data(buffer, type, sizeof(T)));
}

}  // namespace

const pw_stream_events CameraNode::kEvents = [] {
  pw_stream_events events{};
  events.version = PW_VERSION_STREAM_EVENTS;
  events.state_changed = [](void* self, pw_stream_state, pw_stream_state state, const char*) {
    static_cast<CameraNode*>(self)->stateChanged(state);
  };
  events.param_changed = [](void* self, uint32_t id, const spa_pod* param) {
    if (id == SPA_PARAM_Format && param != nullptr) {
      static_cast<CameraNode*>(self)->formatChanged(param);
    }
  };
  events.add_buffer = [](void* data, pw_buffer* buffer) {
    if (auto* self = static_cast<CameraNode*>(data); self->hostile_) {
      self->hostile_->add(buffer->buffer->datas[0], self->pictures_[self->current_].bytes.size());
    }
  };
  events.remove_buffer = [](void* data, pw_buffer* buffer) {
    if (auto* self = static_cast<CameraNode*>(data); self->hostile_) {
      self->hostile_->remove(buffer->buffer->datas[0]);
    }
  };
  events.process = [](void* self) { static_cast<CameraNode*>(self)->fillNextBuffer(); };
  return events;
}();

CameraNode::CameraNode(pw_main_loop* loop, const CameraOptions& options, std::vector<EncodedPicture> pictures)
    : loop_(loop), options_(options), pictures_(std::move(pictures)) {
  if (!options_.memory.empty()) {
    hostile_ = std::make_unique<HostileBuffers>(options_.memory, options_.mischief);
  }
  const auto tick = [](void* self, uint64_t) {
    pw_stream_trigger_process(static_cast<CameraNode*>(self)->stream_.get());
  };
  clock_ = pw_loop_add_timer(pw_main_loop_get_loop(loop_), tick, this);
  publish();
}

void CameraNode::publish() {
  pw_properties* properties =
      pw_properties_new(PW_KEY_MEDIA_CLASS, "Video/Source", PW_KEY_MEDIA_ROLE, "Camera", PW_KEY_NODE_NAME,
                        options_.name.c_str(), PW_KEY_NODE_DESCRIPTION, options_.name.c_str(), nullptr);
  if (!options_.location.empty()) {
    pw_properties_set(properties, "api.libcamera.location", options_.location.c_str());
  }
  if (!options_.rotation.empty()) {
    pw_properties_set(properties, "api.libcamera.rotation", options_.rotation.c_str());
  }
  stream_.reset(
      pw_stream_new_simple(pw_main_loop_get_loop(loop_), options_.name.c_str(), properties, &kEvents, this));
  if (!stream_) {
    return;
  }

  std::array<uint8_t, 8192> space{};
  spa_pod_builder builder = SPA_POD_BUILDER_INIT(space.data(), space.size());
  std::vector<const spa_pod*> formats;
  for (const Mode& mode : options_.modes) {
    formats.push_back(describe(builder, mode, options_.colorimetry));
  }
  const auto flags = static_cast<pw_stream_flags>(
      PW_STREAM_FLAG_DRIVER | (hostile_ ? PW_STREAM_FLAG_ALLOC_BUFFERS : PW_STREAM_FLAG_MAP_BUFFERS));
  connected_ = pw_stream_connect(stream_.get(), PW_DIRECTION_OUTPUT, PW_ID_ANY, flags, formats.data(),
                                 static_cast<uint32_t>(formats.size())) == 0;
}

void CameraNode::stateChanged(pw_stream_state state) {
  std::puts(pw_stream_state_as_string(state));
  std::fflush(stdout);
  runClock(state == PW_STREAM_STATE_STREAMING);
  if (state == PW_STREAM_STATE_ERROR || state == PW_STREAM_STATE_UNCONNECTED) {
    pw_main_loop_quit(loop_);
  }
}

void CameraNode::formatChanged(const spa_pod* format) {
  for (std::size_t i = 0; i < options_.modes.size(); ++i) {
    if (isChosen(format, options_.modes[i])) {
      current_ = i;
    }
  }
  const EncodedPicture& picture = pictures_[current_];
  const int most = options_.buffers > 0 ? options_.buffers : 16;
  std::array<uint8_t, 1024> space{};
  spa_pod_builder builder = SPA_POD_BUILDER_INIT(space.data(), space.size());
  std::vector<const spa_pod*> params;
  params.push_back(static_cast<const spa_pod*>(spa_pod_builder_add_object(
      &builder, SPA_TYPE_OBJECT_ParamBuffers, SPA_PARAM_Buffers, SPA_PARAM_BUFFERS_buffers,
      SPA_POD_CHOICE_RANGE_Int(std::min(4, most), 1, most), SPA_PARAM_BUFFERS_blocks, SPA_POD_Int(1),
      SPA_PARAM_BUFFERS_size, SPA_POD_Int(static_cast<int32_t>(picture.bytes.size())),
      SPA_PARAM_BUFFERS_stride, SPA_POD_Int(picture.stride), SPA_PARAM_BUFFERS_dataType,
      SPA_POD_CHOICE_FLAGS_Int(1 << SPA_DATA_MemFd | (hostile_ ? 1 << SPA_DATA_DmaBuf : 0)))));
  params.push_back(describeMeta(builder, SPA_META_Header, sizeof(spa_meta_header)));
  if (options_.transform) {
    params.push_back(describeMeta(builder, SPA_META_VideoTransform, sizeof(spa_meta_videotransform)));
  }
  pw_stream_update_params(stream_.get(), params.data(), static_cast<uint32_t>(params.size()));
}

void CameraNode::fillNextBuffer() {
  pw_buffer* buffer = pw_stream_dequeue_buffer(stream_.get());
  if (buffer == nullptr) {
    return;
  }
  const EncodedPicture& picture = pictures_[current_];
  spa_data& data = buffer->buffer->datas[0];
  if (hostile_) {
    hostile_->fill(data, picture);
  } else if (data.data != nullptr && data.maxsize >= picture.bytes.size()) {
    std::memcpy(data.data, picture.bytes.data(), picture.bytes.size());
    data.chunk->offset = 0;
    data.chunk->size = static_cast<uint32_t>(picture.bytes.size());
    data.chunk->stride = picture.stride;
  }
  if (auto* header = findMeta<spa_meta_header>(buffer->buffer, SPA_META_Header)) {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    *header = {};
    header->pts = SPA_TIMESPEC_TO_NSEC(&now);
    header->seq = sequence_++;
  }
  if (auto* transform = findMeta<spa_meta_videotransform>(buffer->buffer, SPA_META_VideoTransform)) {
    transform->transform = static_cast<uint32_t>(options_.transform.value_or(0) / 90);
  }
  pw_stream_queue_buffer(stream_.get(), buffer);
  if (hostile_) {
    hostile_->sent(data);
  }
}

void CameraNode::runClock(bool on) {
  constexpr long kSecond = 1'000'000'000;
  timespec first{0, on ? 1 : 0};
  const int rate = options_.modes[current_].framesPerSecond;
  timespec interval{on && rate == 1 ? 1 : 0, on && rate > 1 ? kSecond / rate : 0};
  pw_loop_update_timer(pw_main_loop_get_loop(loop_), clock_, &first, &interval, false);
}

}  // namespace nivlo::test
