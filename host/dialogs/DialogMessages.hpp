// The conversation between the program and nivlo-dialogs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace nivlo {

/// The descriptor at which nivlo-dialogs finds its end of the conversation.
inline constexpr int kDialogSocket = 3;

/// Bytes. A socket takes messages of this size whole, with the kernel's default limits.
inline constexpr std::size_t kLargestDialogMessage = std::size_t{128} * 1024;

/// The texts may hold any bytes.
struct DialogMessage {
  enum class Kind : std::uint8_t {
    // To nivlo-dialogs. Each alert has a number.
    Show,       ///< number, cancel button, disabled button; title, message, buttons
    Close,      ///< number
    Copy,       ///< the text
    Wallpaper,  ///< its name: one more wallpaper to pick from
    Preset,     ///< its words: one more preset of the last wallpaper
    Picture,    ///< the next part of the picture of the last wallpaper or preset
    Pick,       ///< wallpaper and preset to mark: opens the window with the wallpapers so far
    Chosen,     ///< an error message or an empty text: the answer to Picked
    // From nivlo-dialogs.
    Appeared,   ///< number
    Tapped,     ///< number, button
    Cancelled,  ///< number: closed by the user where no button could be pressed
    Copied,     ///< the clipboard has the text
    NoDisplay,  ///< nothing can be shown; nivlo-dialogs ends
    Picked,     ///< wallpaper and preset
  };
  static constexpr auto kLastKind = Kind::Picked;

  Kind kind;
  std::vector<std::int64_t> numbers;
  std::vector<std::string> texts;
};

/// Sends a message. Blocks while the other end is slow, unless the socket does not block. Returns false if
/// the message is too large, the other end is gone, or the socket would block.
bool sendDialogMessage(int socket, const DialogMessage& message);

/// Waits for the next message. Returns nothing when the other end is gone or has sent something else, and
/// nothing from a socket that would block.
std::optional<DialogMessage> receiveDialogMessage(int socket);

}  // namespace nivlo
