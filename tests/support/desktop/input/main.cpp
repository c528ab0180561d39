// nivlo-test-input WIDTH HEIGHT: a virtual pointer and keyboard for a headless compositor whose desktop has
// this size. Takes commands on standard input and answers each with "ok" on a line: "move X Y", "click", and
// "key CODE", with a code of linux/input-event-codes.h.
#include "virtual-keyboard-client-protocol.h"
#include "virtual-pointer-client-protocol.h"

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>
#include <type_traits>

#include <linux/input-event-codes.h>
#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>
#include <xkbcommon/xkbcommon.h>

#include "linux/handles/Owned.hpp"

namespace {

using nivlo::Owned;

struct Globals {
  wl_seat* seat = nullptr;
  zwlr_virtual_pointer_manager_v1* pointers = nullptr;
  zwp_virtual_keyboard_manager_v1* keyboards = nullptr;
};

void takeGlobal(void* data, wl_registry* registry, std::uint32_t name, const char* interface, std::uint32_t) {
  auto& globals = *static_cast<Globals*>(data);
  const auto bindIf = [&](const wl_interface& wanted, auto*& global) {
    if (std::strcmp(interface, wanted.name) == 0) {
      global = static_cast<std::remove_reference_t<decltype(global)>>(
          wl_registry_bind(registry, name, &wanted, 1));
    }
  };
  bindIf(wl_seat_interface, globals.seat);
  bindIf(zwlr_virtual_pointer_manager_v1_interface, globals.pointers);
  bindIf(zwp_virtual_keyboard_manager_v1_interface, globals.keyboards);
}

void loseGlobal(void*, wl_registry*, std::uint32_t) {}

std::uint32_t now() {
  const auto time = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(time).count());
}

void sendKeymap(zwp_virtual_keyboard_v1* keyboard) {
  const Owned<xkb_context, xkb_context_unref> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
  const xkb_rule_names names{.rules = nullptr, .model = nullptr, .layout = "us"};
  const Owned<xkb_keymap, xkb_keymap_unref> keymap(
      xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
  const Owned<char, std::free> text(xkb_keymap_get_as_string(keymap.get(), XKB_KEYMAP_FORMAT_TEXT_V1));
  const auto size = std::strlen(text.get()) + 1;
  const int file = memfd_create("keymap", MFD_CLOEXEC);
  if (write(file, text.get(), size) != static_cast<ssize_t>(size)) {
    std::cerr << "cannot write the keymap\n";
  }
  zwp_virtual_keyboard_v1_keymap(keyboard, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file,
                                 static_cast<std::uint32_t>(size));
  close(file);
}

class Devices {
 public:
  Devices(wl_display* display, const Globals& globals)
      : display_(display),
        pointer_(zwlr_virtual_pointer_manager_v1_create_virtual_pointer(globals.pointers, globals.seat)),
        keyboard_(zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(globals.keyboards, globals.seat)) {
    sendKeymap(keyboard_.get());
  }

  void move(std::uint32_t x, std::uint32_t y, std::uint32_t width, std::uint32_t height) {
    zwlr_virtual_pointer_v1_motion_absolute(pointer_.get(), now(), x, y, width, height);
    zwlr_virtual_pointer_v1_frame(pointer_.get());
  }

  void click() {
    for (const auto state : {WL_POINTER_BUTTON_STATE_PRESSED, WL_POINTER_BUTTON_STATE_RELEASED}) {
      zwlr_virtual_pointer_v1_button(pointer_.get(), now(), BTN_LEFT, state);
      zwlr_virtual_pointer_v1_frame(pointer_.get());
      wl_display_roundtrip(display_);
    }
  }

  void key(std::uint32_t code) {
    for (const auto state : {WL_KEYBOARD_KEY_STATE_PRESSED, WL_KEYBOARD_KEY_STATE_RELEASED}) {
      zwp_virtual_keyboard_v1_key(keyboard_.get(), now(), code, state);
      wl_display_roundtrip(display_);
    }
  }

 private:
  wl_display* display_;
  Owned<zwlr_virtual_pointer_v1, zwlr_virtual_pointer_v1_destroy> pointer_;
  Owned<zwp_virtual_keyboard_v1, zwp_virtual_keyboard_v1_destroy> keyboard_;
};

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) {
    std::cerr << "usage: nivlo-test-input WIDTH HEIGHT\n";
    return 2;
  }
  const Owned<wl_display, wl_display_disconnect> display(wl_display_connect(nullptr));
  if (!display) {
    std::cerr << "cannot connect to a compositor; check WAYLAND_DISPLAY\n";
    return 1;
  }
  Globals globals;
  const wl_registry_listener listener{takeGlobal, loseGlobal};
  const Owned<wl_registry, wl_registry_destroy> registry(wl_display_get_registry(display.get()));
  wl_registry_add_listener(registry.get(), &listener, &globals);
  wl_display_roundtrip(display.get());
  if (!globals.seat || !globals.pointers || !globals.keyboards) {
    std::cerr << "the compositor does not support virtual input devices\n";
    return 1;
  }
  Devices devices(display.get(), globals);
  std::string command = "ready";
  do {
    std::uint32_t x = 0, y = 0;
    if (command == "move" && std::cin >> x >> y) {
      devices.move(x, y, std::stoul(arguments[1]), std::stoul(arguments[2]));
    } else if (command == "click") {
      devices.click();
    } else if (command == "key" && std::cin >> x) {
      devices.key(x);
    }
    if (wl_display_roundtrip(display.get()) < 0) {
      std::cerr << "the compositor is gone\n";
      return 1;
    }
    std::cout << "ok " << command << std::endl;
  } while (std::cin >> command);
}
