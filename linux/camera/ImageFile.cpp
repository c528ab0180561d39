#include "linux/camera/ImageFile.hpp"

#include <algorithm>
#include <array>
#include <fstream>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <libyuv/convert_from_argb.h>

#include "linux/camera/ErrorMessage.hpp"
#include "linux/handles/Owned.hpp"

namespace nivlo {
namespace {

using namespace std::string_view_literals;

// The decoders and the arithmetic on pixels handle pictures up to these sizes without trouble. A larger one
// is a mistake or an attack.
constexpr int kLongestEdge = 16384;
constexpr long kMostPixels = 100'000'000;
// No picture of that many pixels needs more in any of the formats.
constexpr std::uintmax_t kMostBytes = 4 * kMostPixels;

/// A format by gdk-pixbuf's name, and what its files begin with.
struct Signature {
  std::string_view name;
  std::string_view begin;
  std::string_view atEight;  ///< from the ninth byte on
};

constexpr std::array kSignatures{
    Signature{"png", "\x89PNG\r\n\x1A\n"sv, ""},
    Signature{"jpeg", "\xFF\xD8\xFF"sv, ""},
    Signature{"webp", "RIFF"sv, "WEBP"sv},
};

using Pixbuf = Owned<GdkPixbuf, g_object_unref>;
using Text = Owned<gchar, g_free>;

std::string fileProblem(const std::filesystem::path& path) {
  std::error_code problem;
  const auto status = std::filesystem::status(path, problem);
  if (status.type() == std::filesystem::file_type::not_found) {
    return "there is no such file; check the path";
  }
  if (problem) {
    return problem.message() + "; check the path and its permissions";
  }
  if (std::filesystem::is_directory(status)) {
    return "it is a directory; name a picture inside it";
  }
  if (!std::filesystem::is_regular_file(status)) {
    return "it is not a regular file; copy the picture into one";
  }
  if (!std::ifstream(path)) {
    return "reading it is not allowed; check its permissions";
  }
  const auto size = std::filesystem::file_size(path, problem);
  if (size == 0) {
    return "the file is empty; save or download it again";
  }
  if (size > kMostBytes) {
    return "it is larger than " + std::to_string(kMostBytes / 1'000'000) +
           " MB, as no picture is; check that it is one";
  }
  return {};
}

struct Size {
  int width = 0;
  int height = 0;
};

/// The name of the format whose signature the file begins with; empty when there is none, or when the file
/// cannot be read without waiting.
std::string_view formatOf(const std::filesystem::path& path) {
  std::error_code problem;
  if (!std::filesystem::is_regular_file(path, problem)) {
    return {};
  }
  std::array<char, 12> bytes{};
  std::ifstream(path, std::ios::binary).read(bytes.data(), bytes.size());
  const std::string_view beginning(bytes.data(), bytes.size());
  const auto found = std::ranges::find_if(kSignatures, [&](const Signature& signature) {
    return beginning.starts_with(signature.begin) && beginning.substr(8).starts_with(signature.atEight);
  });
  return found == kSignatures.end() ? std::string_view() : found->name;
}

/// The size that the beginning of a picture states; nothing when the file does not begin like a picture.
/// gdk-pixbuf has loaders for many formats, also from other packages, and would hand the file to whichever
/// claims it, so it only gets to see files that begin like one of ours.
std::optional<Size> readSize(const std::filesystem::path& path) {
  const std::string_view expected = formatOf(path);
  if (expected.empty()) {
    return std::nullopt;
  }
  Size size;
  GdkPixbufFormat* format = gdk_pixbuf_get_file_info(path.c_str(), &size.width, &size.height);
  const Text name(format ? gdk_pixbuf_format_get_name(format) : nullptr);
  return name && name.get() == expected ? std::optional(size) : std::nullopt;
}

std::string contentProblem(const std::filesystem::path& path) {
  const auto size = readSize(path);
  if (!size) {
    return "it is not a PNG, JPEG or WebP picture, or ends before it says its size; use a complete file of "
           "one of these kinds";
  }
  const auto [width, height] = *size;
  if (width > kLongestEdge || height > kLongestEdge || static_cast<long>(width) * height > kMostPixels) {
    return "it has " + std::to_string(width) + " x " + std::to_string(height) +
           " pixels; scale it down to at most " + std::to_string(kLongestEdge) + " along each edge and " +
           std::to_string(kMostPixels / 1'000'000) + " million in all";
  }
  return {};
}

/// Reads from behind the start-of-image marker on.
bool endsBeforeEndMarker(std::istream& jpeg) {
  constexpr int endOfImage = 0xD9, firstRestart = 0xD0, lastRestart = 0xD7;
  for (int byte = jpeg.get(); jpeg; byte = jpeg.get()) {
    if (byte != 0xFF) {
      continue;
    }
    while (jpeg.peek() == 0xFF) {
      jpeg.get();
    }
    const int marker = jpeg.get();
    if (marker == endOfImage) {
      return false;
    }
    if (marker != 0 && (marker < firstRestart || marker > lastRestart)) {
      const int high = jpeg.get();
      const int length = high << 8 | jpeg.get();  // it counts its own two bytes
      jpeg.ignore(std::max(0, length - 2));
    }
  }
  return true;
}

/// Reads the size, which stands behind the first four bytes.
bool endsBeforeStatedSize(std::istream& riff, std::uintmax_t fileSize) {
  constexpr std::uintmax_t headerSize = 8;
  std::uintmax_t size = 0;
  for (int shift = 0; shift < 32; shift += 8) {
    size |= static_cast<std::uintmax_t>(riff.get() & 0xFF) << shift;
  }
  return fileSize < headerSize + size;
}

/// The decoders of JPEG and WebP fill in what is missing and report success, so the files are checked here.
bool isTruncated(const std::filesystem::path& path) {
  const std::string_view format = formatOf(path);
  std::ifstream file(path, std::ios::binary);
  if (format == "jpeg") {
    file.ignore(2);
    return endsBeforeEndMarker(file);
  }
  file.ignore(4);
  std::error_code problem;
  return format == "webp" && endsBeforeStatedSize(file, std::filesystem::file_size(path, problem));
}

Pixbuf onWhite(Pixbuf picture) {
  if (!gdk_pixbuf_get_has_alpha(picture.get())) {
    return picture;
  }
  const int width = gdk_pixbuf_get_width(picture.get());
  const int height = gdk_pixbuf_get_height(picture.get());
  Pixbuf opaque(gdk_pixbuf_new(GDK_COLORSPACE_RGB, FALSE, 8, width, height));
  if (!opaque) {
    return nullptr;
  }
  gdk_pixbuf_fill(opaque.get(), 0xFFFFFFFF);
  gdk_pixbuf_composite(picture.get(), opaque.get(), 0, 0, width, height, 0, 0, 1, 1, GDK_INTERP_NEAREST, 255);
  return opaque;
}

VideoFramePtr asFrame(Pixbuf picture) {
  auto frame = std::make_shared<VideoFrame>();
  frame->format = PixelFormat::RGB;
  frame->width = gdk_pixbuf_get_width(picture.get());
  frame->height = gdk_pixbuf_get_height(picture.get());
  frame->planes[0] = {gdk_pixbuf_read_pixels(picture.get()), gdk_pixbuf_get_rowstride(picture.get())};
  frame->captureTime = std::chrono::steady_clock::now();
  frame->storage = std::shared_ptr<GdkPixbuf>(std::move(picture));
  return frame;
}

}  // namespace

bool isImageFile(const std::filesystem::path& path) { return readSize(path).has_value(); }

ImageLoad loadImageFile(const std::filesystem::path& path) {
  const auto failure = [&](const std::string& cause) {
    return ImageLoad{nullptr, "cannot read the picture " + path.string() + ": " + cause};
  };
  if (const auto problem = fileProblem(path); !problem.empty()) {
    return failure(problem);
  }
  if (const auto problem = contentProblem(path); !problem.empty()) {
    return failure(problem);
  }
  GError* error = nullptr;
  Pixbuf picture(gdk_pixbuf_new_from_file(path.c_str(), &error));
  if (!picture) {
    return failure(takeMessage(error) + "; save or download it again");
  }
  if (isTruncated(path)) {
    return failure("the file is cut short; save or download it again");
  }
  picture.reset(gdk_pixbuf_apply_embedded_orientation(picture.get()));
  if (picture) {
    picture = onWhite(std::move(picture));
  }
  if (!picture) {
    return failure("there is not enough memory for the picture; scale it down");
  }
  return {asFrame(std::move(picture)), {}};
}

std::string writePNG(const std::filesystem::path& path, const std::uint8_t* bgrx, int width, int height,
                     int stride) {
  const auto failure = [&](const std::string& cause) {
    return "cannot write " + path.string() + ": " + cause;
  };
  if (!bgrx || width <= 0 || height <= 0) {
    return failure("there is no picture to write");
  }
  Pixbuf picture(gdk_pixbuf_new(GDK_COLORSPACE_RGB, FALSE, 8, width, height));
  if (!picture) {
    return failure("there is not enough memory for the picture; choose a smaller size");
  }
  libyuv::ARGBToRAW(bgrx, stride, gdk_pixbuf_get_pixels(picture.get()),
                    gdk_pixbuf_get_rowstride(picture.get()), width, height);
  GError* error = nullptr;
  gchar* data = nullptr;
  gsize size = 0;
  if (!gdk_pixbuf_save_to_buffer(picture.get(), &data, &size, "png", &error, nullptr)) {
    return failure(takeMessage(error));
  }
  const Text png(data);
  // Writes a new file beside the old one and renames it.
  if (!g_file_set_contents(path.c_str(), png.get(), static_cast<gssize>(size), &error)) {
    return failure(takeMessage(error));
  }
  return {};
}

}  // namespace nivlo
