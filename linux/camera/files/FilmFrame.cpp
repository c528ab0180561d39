#include "linux/camera/files/FilmFrame.hpp"

#include <chrono>
#include <memory>
#include <string_view>
#include <utility>

#include <gst/video/video.h>

#include "linux/handles/Owned.hpp"

namespace nivlo {
namespace {

/// Keeps the sample's buffer but not the sample, because an appsink can reuse its sample object only while it
/// is the only owner.
struct MappedPicture {
  explicit MappedPicture(GstSample* sample) {
    GstVideoInfo info;
    GstCaps* caps = gst_sample_get_caps(sample);
    GstBuffer* buffer = gst_sample_get_buffer(sample);
    isMapped = caps && buffer && gst_video_info_from_caps(&info, caps) &&
               gst_video_frame_map(&video, &info, buffer, GST_MAP_READ);
  }
  ~MappedPicture() {
    if (isMapped) {
      gst_video_frame_unmap(&video);
    }
  }
  MappedPicture(const MappedPicture&) = delete;
  MappedPicture& operator=(const MappedPicture&) = delete;

  GstVideoFrame video{};
  bool isMapped = false;
};

ColorMatrix matrixOf(const GstVideoColorimetry& colorimetry) {
  // ColorMatrix does not have BT.2020; BT.709 comes closest.
  const bool isWide = colorimetry.matrix == GST_VIDEO_COLOR_MATRIX_BT2020;
  return isWide || colorimetry.matrix == GST_VIDEO_COLOR_MATRIX_BT709 ? ColorMatrix::BT709
                                                                      : ColorMatrix::BT601;
}

int rotationFromTagList(const GstTagList* tags) {
  gchar* text = nullptr;
  if (!gst_tag_list_get_string(tags, GST_TAG_IMAGE_ORIENTATION, &text)) {
    return 0;
  }
  const Owned<gchar, g_free> owner(text);
  const std::string_view orientation(text);
  // The tag names the clockwise turn that makes the picture upright; ours is counter-clockwise.
  if (orientation.ends_with("rotate-90")) {
    return 270;
  }
  if (orientation.ends_with("rotate-180")) {
    return 180;
  }
  if (orientation.ends_with("rotate-270")) {
    return 90;
  }
  return 0;
}

}  // namespace

VideoFramePtr frameFromSample(GstSample* sample, int rotation) {
  auto mapped = std::make_shared<MappedPicture>(sample);
  if (!mapped->isMapped) {
    return nullptr;
  }
  const GstVideoFrame& video = mapped->video;
  const auto format = GST_VIDEO_FRAME_FORMAT(&video);
  if (format != GST_VIDEO_FORMAT_I420 && format != GST_VIDEO_FORMAT_NV12) {
    return nullptr;
  }
  auto frame = std::make_shared<VideoFrame>();
  frame->format = format == GST_VIDEO_FORMAT_I420 ? PixelFormat::I420 : PixelFormat::NV12;
  frame->width = GST_VIDEO_FRAME_WIDTH(&video);
  frame->height = GST_VIDEO_FRAME_HEIGHT(&video);
  for (guint i = 0; i < GST_VIDEO_FRAME_N_PLANES(&video); ++i) {
    frame->planes[i] = {static_cast<const std::uint8_t*>(GST_VIDEO_FRAME_PLANE_DATA(&video, i)),
                        GST_VIDEO_FRAME_PLANE_STRIDE(&video, i)};
  }
  const auto& colorimetry = video.info.colorimetry;
  frame->matrix = matrixOf(colorimetry);
  frame->range = colorimetry.range == GST_VIDEO_COLOR_RANGE_0_255 ? ColorRange::Full : ColorRange::Limited;
  frame->rotation = rotation;
  frame->captureTime = std::chrono::steady_clock::now();
  frame->storage = std::move(mapped);
  return frame;
}

int rotationFromTags(GstPad* pad) {
  int rotation = 0;
  for (guint i = 0;; ++i) {
    const Owned<GstEvent, gst_event_unref> event(gst_pad_get_sticky_event(pad, GST_EVENT_TAG, i));
    if (!event) {
      return rotation;
    }
    GstTagList* tags = nullptr;
    gst_event_parse_tag(event.get(), &tags);
    if (const int found = rotationFromTagList(tags)) {
      rotation = found;
    }
  }
}

}  // namespace nivlo
