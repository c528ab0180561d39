#include "host/surfaces/windows/HyprlandWindows.hpp"

#include <cstddef>
#include <utility>

#include "host/surfaces/windows/HyprlandAnswers.hpp"

namespace nivlo {

namespace {

/// A hundred windows need a hundredth of it.
constexpr std::size_t kLongestAnswer = std::size_t{16} << 20;
constexpr std::size_t kLongestEvent = std::size_t{64} * 1024;

/// Many programs change their titles all the time.
bool isTitle(std::string_view event) { return event.starts_with("windowtitle"); }

}  // namespace

std::unique_ptr<WindowSource> HyprlandWindows::open(std::string folder, Handlers handlers,
                                                    std::string* error) {
  std::unique_ptr<HyprlandWindows> source(new HyprlandWindows(std::move(folder), std::move(handlers)));
  source->events_ = LocalSocket::open(
      source->folder_ + "/.socket2.sock",
      {.received = [self = source.get()](std::string_view events) { self->received(events); },
       .ended = [self = source.get()] { self->end("Hyprland has closed the connection"); }},
      error);
  if (!source->events_) {
    return nullptr;
  }
  return source;
}

void HyprlandWindows::ask() {
  request(monitorsRequest_, "j/monitors", [this] {
    monitors_ = std::move(answer_);
    request(clientsRequest_, "j/clients", [this] { answersCame(); });
  });
}

/// Hyprland ends each answer by closing the connection.
void HyprlandWindows::request(std::unique_ptr<LocalSocket>& socket, std::string_view command,
                              std::function<void()> answered) {
  if (ended_) {
    return;
  }
  answer_.clear();
  std::string error = "Hyprland takes no request";
  const auto received = [this](std::string_view bytes) {
    answer_.append(bytes);
    if (answer_.size() > kLongestAnswer) {
      end("Hyprland's answer is too long");
    }
  };
  socket = LocalSocket::open(folder_ + "/.socket.sock", {.received = received, .ended = std::move(answered)},
                             &error);
  if (!socket || !socket->send(command)) {
    end(error);
  }
}

void HyprlandWindows::answersCame() {
  auto windows = windowsInHyprland(monitors_, answer_);
  if (windows) {
    handlers_.answered(std::move(*windows));
  } else {
    end("Hyprland's description of its windows cannot be read");
  }
}

void HyprlandWindows::received(std::string_view events) {
  line_.append(events);
  bool changed = false;
  for (auto end = line_.find('\n'); end != std::string::npos; end = line_.find('\n')) {
    changed = changed || !isTitle(line_);
    line_.erase(0, end + 1);
  }
  if (line_.size() > kLongestEvent) {
    end("Hyprland's event is too long");
  } else if (changed) {
    handlers_.changed();
  }
}

void HyprlandWindows::end(const std::string& cause) {
  if (std::exchange(ended_, true)) {
    return;
  }
  events_->ignore();
  for (const auto* request : {&monitorsRequest_, &clientsRequest_}) {
    if (*request) {
      (*request)->ignore();
    }
  }
  handlers_.ended(cause);
}

}  // namespace nivlo
