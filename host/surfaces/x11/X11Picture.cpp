#include "host/surfaces/x11/X11Picture.hpp"

#include <algorithm>
#include <new>

#include <sys/mman.h>
#include <unistd.h>
#include <xcb/shm.h>

#include "host/surfaces/x11/X11Events.hpp"

namespace nivlo {

namespace {

/// A property that is changed after a picture has been copied to the server. The event for it shows that the
/// server has got that far.
constexpr auto kSentMark = "_NIVLO_PICTURE_SENT";

}  // namespace

X11Picture::X11Picture(X11Connection& connection, int width, int height)
    : connection_(connection), bytes_(static_cast<std::size_t>(width) * height * 4) {
  pixels_ = {nullptr, width, height, width * 4};
  if (!share()) {
    void* memory = mmap(nullptr, bytes_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
      throw std::bad_alloc();
    }
    pixels_.data = static_cast<std::uint8_t*>(memory);
  }
}

/// The server has a mapping of its own, which it keeps until it has carried out the requests that read from
/// it.
X11Picture::~X11Picture() {
  if (segment_ != 0) {
    xcb_shm_detach(connection_.get(), segment_);
  }
  munmap(pixels_.data, bytes_);
}

bool X11Picture::share() {
  const auto* extension = connection_.extension(xcb_shm_id);
  const int file = extension ? memfd_create("nivlo-picture", MFD_CLOEXEC) : -1;
  if (file < 0) {
    return false;
  }
  void* memory = ftruncate(file, static_cast<off_t>(bytes_)) == 0
                     ? mmap(nullptr, bytes_, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0)
                     : MAP_FAILED;
  if (memory == MAP_FAILED) {
    close(file);
    return false;
  }
  const auto segment = xcb_generate_id(connection_.get());
  // The connection closes the file once it has been passed on.
  const auto request = xcb_shm_attach_fd_checked(connection_.get(), segment, file, 1);
  if (const X11Reply<xcb_generic_error_t> error{xcb_request_check(connection_.get(), request)}) {
    munmap(memory, bytes_);
    return false;
  }
  pixels_.data = static_cast<std::uint8_t*>(memory);
  segment_ = segment;
  completion_ = static_cast<std::uint8_t>(extension->first_event + XCB_SHM_COMPLETION);
  return true;
}

void X11Picture::put(xcb_window_t window, xcb_gcontext_t context) {
  window_ = window;
  inUse_ = true;
  if (segment_ == 0) {
    send(window, context);
    return;
  }
  const auto width = static_cast<std::uint16_t>(pixels_.width);
  const auto height = static_cast<std::uint16_t>(pixels_.height);
  xcb_shm_put_image(connection_.get(), window, context, width, height, 0, 0, width, height, 0, 0,
                    connection_.screen().root_depth, XCB_IMAGE_FORMAT_Z_PIXMAP, 1, segment_, 0);
}

/// Goes in strips, because the length of a request is limited.
void X11Picture::send(xcb_window_t window, xcb_gcontext_t context) {
  constexpr std::uint32_t kHeaderBytes = 64;
  const auto limit = xcb_get_maximum_request_length(connection_.get()) * 4 - kHeaderBytes;
  const int strip = std::max(1, static_cast<int>(limit / static_cast<std::uint32_t>(pixels_.stride)));
  for (int row = 0; row < pixels_.height; row += strip) {
    const int rows = std::min(strip, pixels_.height - row);
    xcb_put_image(connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, window, context,
                  static_cast<std::uint16_t>(pixels_.width), static_cast<std::uint16_t>(rows), 0,
                  static_cast<std::int16_t>(row), 0, connection_.screen().root_depth,
                  static_cast<std::uint32_t>(rows * pixels_.stride), pixels_.at(0, row));
  }
  connection_.setValues(window, kSentMark, XCB_ATOM_CARDINAL, {});
}

void X11Picture::handle(const xcb_generic_event_t& event) {
  const auto kind = typeOf(event);
  if (segment_ != 0 && kind == completion_) {
    const auto& completion = as<xcb_shm_completion_event_t>(event);
    inUse_ = inUse_ && completion.shmseg != segment_;
  } else if (segment_ == 0 && kind == XCB_PROPERTY_NOTIFY) {
    const auto& property = as<xcb_property_notify_event_t>(event);
    inUse_ = inUse_ && !(property.window == window_ && property.atom == connection_.atom(kSentMark));
  }
}

}  // namespace nivlo
