// Tells the events of an X server apart.
#pragma once

#include <xcb/xcb.h>

namespace nivlo {

/// The event's type, for example XCB_EXPOSE, no matter whether the server or another client sent it.
inline int typeOf(const xcb_generic_event_t& event) {
  constexpr int kSentByClient = 0x80;
  return event.response_type & ~kSentByClient;
}

/// The event as the structure that belongs to its type, which the caller must have checked.
template <typename Event>
const Event& as(const xcb_generic_event_t& event) {
  return reinterpret_cast<const Event&>(event);
}

}  // namespace nivlo
