#include "host/surfaces/x11/X11ScreenPower.hpp"

#include <chrono>

#include <xcb/dpms.h>

namespace nivlo {

namespace {

constexpr std::chrono::seconds kPeriod{1};

}  // namespace

void X11ScreenPower::watch() {
  if (!connection_.extension(xcb_dpms_id)) {
    return;
  }
  const auto request = xcb_dpms_capable(connection_.get());
  const X11Reply<xcb_dpms_capable_reply_t> reply(xcb_dpms_capable_reply(connection_.get(), request, nullptr));
  if (reply && reply->capable != 0) {
    ask();
  }
}

void X11ScreenPower::ask() {
  const auto request = xcb_dpms_info(connection_.get());
  const X11Reply<xcb_dpms_info_reply_t> reply(xcb_dpms_info_reply(connection_.get(), request, nullptr));
  on_ = !reply || reply->state == 0 || reply->power_level == XCB_DPMS_DPMS_MODE_ON;
  timer_ = EventSource::onTimeout(kPeriod, [this] {
    ask();
    connection_.dispatch();
  });
}

}  // namespace nivlo
