#include "host/surfaces/wayland/EscapeKey.hpp"

#include <cstdint>

#include <linux/input-event-codes.h>
#include <unistd.h>

namespace nivlo {

const wl_seat_listener EscapeKey::kSeatListener{
    .capabilities =
        [](void* data, wl_seat*, std::uint32_t capabilities) {
          static_cast<EscapeKey*>(data)->seatChanged((capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0);
        },
    .name = [](void*, wl_seat*, const char*) {}};

const wl_keyboard_listener EscapeKey::kKeyboardListener{
    .keymap = [](void*, wl_keyboard*, std::uint32_t, std::int32_t file, std::uint32_t) { close(file); },
    .enter = [](void*, wl_keyboard*, std::uint32_t, wl_surface*, wl_array*) {},
    .leave = [](void*, wl_keyboard*, std::uint32_t, wl_surface*) {},
    .key =
        [](void* data, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t key, std::uint32_t state) {
          const auto& self = *static_cast<EscapeKey*>(data);
          if (key == KEY_ESC && state == WL_KEYBOARD_KEY_STATE_PRESSED && self.pressed_) {
            self.pressed_();
          }
        },
    .modifiers = [](void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t,
                    std::uint32_t) {},
    .repeat_info = [](void*, wl_keyboard*, std::int32_t, std::int32_t) {}};

EscapeKey::EscapeKey(WaylandHandle<wl_seat> seat) : seat_(std::move(seat)) {
  wl_seat_add_listener(seat_.get(), &kSeatListener, this);
}

void EscapeKey::seatChanged(bool hasKeyboard) {
  if (!hasKeyboard) {
    keyboard_.reset();
  } else if (!keyboard_) {
    keyboard_.reset(wl_seat_get_keyboard(seat_.get()));
    wl_keyboard_add_listener(keyboard_.get(), &kKeyboardListener, this);
  }
}

}  // namespace nivlo
