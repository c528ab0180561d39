#include "host/surfaces/windows/SwayWindows.hpp"

#include <utility>

#include "host/surfaces/windows/SwayTree.hpp"

namespace nivlo {

std::unique_ptr<WindowSource> SwayWindows::open(const std::string& path, Handlers handlers,
                                                std::string* error) {
  std::unique_ptr<SwayWindows> source(new SwayWindows(std::move(handlers)));
  source->socket_ =
      LocalSocket::open(path,
                        {.received = [self = source.get()](std::string_view bytes) { self->received(bytes); },
                         .ended = [self = source.get()] { self->end("sway has closed the connection"); }},
                        error);
  if (!source->socket_) {
    return nullptr;
  }
  if (!source->socket_->send(swayMessage(SwayMessage::Subscribe, R"(["window","workspace","output"])"))) {
    *error = "sway takes no message";
    return nullptr;
  }
  return source;
}

void SwayWindows::ask() {
  if (!ended_ && !socket_->send(swayMessage(SwayMessage::GetTree, ""))) {
    end("sway takes no message");
  }
}

void SwayWindows::received(std::string_view bytes) {
  if (!messages_.take(bytes, [this](SwayMessage type, std::string_view payload) { handle(type, payload); })) {
    end("sway sends what is no message of its protocol");
  }
}

void SwayWindows::handle(SwayMessage type, std::string_view payload) {
  constexpr auto kAnyEvent = 0x80000000U;
  if (ended_) {
    return;
  }
  if (type == SwayMessage::GetTree) {
    auto windows = windowsInSwayTree(payload);
    if (windows) {
      handlers_.answered(std::move(*windows));
    } else {
      end("sway's description of its windows cannot be read");
    }
  } else if (type == SwayMessage::WindowEvent ? movesWindows(payload)
                                              : (static_cast<std::uint32_t>(type) & kAnyEvent) != 0) {
    handlers_.changed();
  }
}

void SwayWindows::end(const std::string& cause) {
  if (!std::exchange(ended_, true)) {
    socket_->ignore();
    handlers_.ended(cause);
  }
}

}  // namespace nivlo
