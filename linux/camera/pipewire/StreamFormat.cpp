#include "linux/camera/pipewire/StreamFormat.hpp"

#include <algorithm>
#include <array>

#include <spa/param/video/format-utils.h>

namespace nivlo {
namespace {

struct Wish {
  spa_rectangle smallest, largest;
  uint32_t slowest;  ///< frames per second; 0 accepts any rate
};

// 720p fills a desktop and is cheap to search for codes, and below 15 frames a second the picture stutters.
// Where a camera does not offer that, a similar size is the next best, and any picture is better than none.
constexpr std::array<Wish, 3> kWishes{{
    {{1280, 720}, {1280, 720}, 15},
    {{960, 540}, {1920, 1200}, 15},
    {{1, 1}, {kLongestPictureEdge, kLongestPictureEdge}, 0},
}};

const spa_pod* describe(spa_pod_builder& builder, spa_media_subtype subtype, const Wish& wish,
                        bool grey = false) {
  const spa_rectangle ideal{1280, 720};
  const spa_fraction slowest{wish.slowest, 1};
  const spa_fraction fastest{240, 1};
  const spa_fraction usual{30, 1};
  spa_pod_frame frame{};
  spa_pod_builder_push_object(&builder, &frame, SPA_TYPE_OBJECT_Format, SPA_PARAM_EnumFormat);
  spa_pod_builder_add(&builder, SPA_FORMAT_mediaType, SPA_POD_Id(SPA_MEDIA_TYPE_video),
                      SPA_FORMAT_mediaSubtype, SPA_POD_Id(subtype), 0);
  if (grey) {
    spa_pod_builder_add(&builder, SPA_FORMAT_VIDEO_format, SPA_POD_Id(SPA_VIDEO_FORMAT_GRAY8), 0);
  } else if (subtype == SPA_MEDIA_SUBTYPE_raw) {
    spa_pod_builder_add(
        &builder, SPA_FORMAT_VIDEO_format,
        SPA_POD_CHOICE_ENUM_Id(9, SPA_VIDEO_FORMAT_NV12, SPA_VIDEO_FORMAT_NV12, SPA_VIDEO_FORMAT_I420,
                               SPA_VIDEO_FORMAT_YUY2, SPA_VIDEO_FORMAT_BGRx, SPA_VIDEO_FORMAT_BGRA,
                               SPA_VIDEO_FORMAT_RGBx, SPA_VIDEO_FORMAT_RGBA, SPA_VIDEO_FORMAT_RGB),
        0);
  }
  spa_pod_builder_add(
      &builder, SPA_FORMAT_VIDEO_size, SPA_POD_CHOICE_RANGE_Rectangle(&ideal, &wish.smallest, &wish.largest),
      SPA_FORMAT_VIDEO_framerate, SPA_POD_CHOICE_RANGE_Fraction(&usual, &slowest, &fastest), 0);
  return static_cast<const spa_pod*>(spa_pod_builder_pop(&builder, &frame));
}

std::optional<PixelFormat> pixelFormat(spa_video_format format) {
  switch (format) {
    case SPA_VIDEO_FORMAT_NV12:
    case SPA_VIDEO_FORMAT_GRAY8:
      return PixelFormat::NV12;
    case SPA_VIDEO_FORMAT_I420:
      return PixelFormat::I420;
    case SPA_VIDEO_FORMAT_YUY2:
      return PixelFormat::YUY2;
    case SPA_VIDEO_FORMAT_BGRx:
    case SPA_VIDEO_FORMAT_BGRA:
      return PixelFormat::BGRx;
    case SPA_VIDEO_FORMAT_RGBx:
    case SPA_VIDEO_FORMAT_RGBA:
      return PixelFormat::RGBx;
    case SPA_VIDEO_FORMAT_RGB:
      return PixelFormat::RGB;
    default:
      return std::nullopt;
  }
}

ColorMatrix matrixOf(const spa_video_info_raw& info) {
  switch (info.color_matrix) {
    case SPA_VIDEO_COLOR_MATRIX_BT709:
      return ColorMatrix::BT709;
    case SPA_VIDEO_COLOR_MATRIX_BT601:
    case SPA_VIDEO_COLOR_MATRIX_FCC:
      return ColorMatrix::BT601;
    default:
      return info.size.height >= 720 ? ColorMatrix::BT709 : ColorMatrix::BT601;
  }
}

/// Grey cameras, which are made for recognising faces, use all values unless they say otherwise.
ColorRange rangeOf(const spa_video_info_raw& info) {
  const bool isFull =
      info.color_range == SPA_VIDEO_COLOR_RANGE_0_255 ||
      (info.format == SPA_VIDEO_FORMAT_GRAY8 && info.color_range == SPA_VIDEO_COLOR_RANGE_UNKNOWN);
  return isFull ? ColorRange::Full : ColorRange::Limited;
}

bool setSize(StreamFormat& format, const spa_rectangle& size) {
  if (size.width < 1 || size.height < 1 || size.width > kLongestPictureEdge ||
      size.height > kLongestPictureEdge) {
    return false;
  }
  format.width = static_cast<int>(size.width);
  format.height = static_cast<int>(size.height);
  return true;
}

std::optional<StreamFormat> parseRaw(const spa_pod* pod) {
  spa_video_info_raw info{};
  if (spa_format_video_raw_parse(pod, &info) < 0) {
    return std::nullopt;
  }
  const std::optional<PixelFormat> pixels = pixelFormat(info.format);
  StreamFormat format;
  if (!pixels || !setSize(format, info.size)) {
    return std::nullopt;
  }
  format.pixels = *pixels;
  format.matrix = matrixOf(info);
  format.isGrey = info.format == SPA_VIDEO_FORMAT_GRAY8;
  format.range = rangeOf(info);
  return format;
}

}  // namespace

std::vector<const spa_pod*> formatsToAskFor(spa_pod_builder& builder) {
  std::vector<const spa_pod*> formats;
  for (const Wish& wish : kWishes) {
    formats.push_back(describe(builder, SPA_MEDIA_SUBTYPE_raw, wish));
    formats.push_back(describe(builder, SPA_MEDIA_SUBTYPE_mjpg, wish));
  }
  formats.push_back(describe(builder, SPA_MEDIA_SUBTYPE_raw, kWishes.back(), true));
  return formats;
}

bool offersColours(const spa_pod* format) {
  uint32_t type = 0;
  uint32_t subtype = 0;
  const spa_pod_prop* pixels = spa_pod_find_prop(format, nullptr, SPA_FORMAT_VIDEO_format);
  if (spa_format_parse(format, &type, &subtype) < 0 || subtype != SPA_MEDIA_SUBTYPE_raw ||
      pixels == nullptr) {
    return true;
  }
  uint32_t count = 0;
  uint32_t choice = 0;
  const spa_pod* first = spa_pod_get_values(&pixels->value, &count, &choice);
  const auto* values = static_cast<const uint32_t*>(SPA_POD_BODY_CONST(first));
  return first->type != SPA_TYPE_Id || !std::all_of(values, values + count, [](uint32_t value) {
           return value == SPA_VIDEO_FORMAT_GRAY8 || value == SPA_VIDEO_FORMAT_GRAY16_LE ||
                  value == SPA_VIDEO_FORMAT_GRAY16_BE;
         });
}

std::optional<StreamFormat> parseFormat(const spa_pod* pod) {
  uint32_t type = 0;
  uint32_t subtype = 0;
  if (spa_format_parse(pod, &type, &subtype) < 0 || type != SPA_MEDIA_TYPE_video) {
    return std::nullopt;
  }
  if (subtype == SPA_MEDIA_SUBTYPE_raw) {
    return parseRaw(pod);
  }
  spa_video_info_mjpg info{};
  StreamFormat format;
  format.isJpeg = true;
  const bool readable = subtype == SPA_MEDIA_SUBTYPE_mjpg && spa_format_video_mjpg_parse(pod, &info) >= 0 &&
                        setSize(format, info.size);
  return readable ? std::optional(format) : std::nullopt;
}

}  // namespace nivlo
