#include "host/surfaces/windows/LocalSocket.hpp"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <utility>

#include <fmt/format.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace nivlo {

std::unique_ptr<LocalSocket> LocalSocket::open(const std::string& path, Handlers handlers,
                                               std::string* error) {
  sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
  if (path.size() >= sizeof(address.sun_path)) {
    *error = fmt::format("the path {} is too long for a socket", path);
    return nullptr;
  }
  path.copy(address.sun_path, path.size());
  Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  if (socket.get() < 0 ||
      connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
    *error = fmt::format("cannot connect to {}: {}", path, std::strerror(errno));
    return nullptr;
  }
  return std::unique_ptr<LocalSocket>(new LocalSocket(std::move(socket), std::move(handlers)));
}

LocalSocket::LocalSocket(Descriptor socket, Handlers handlers)
    : socket_(std::move(socket)),
      handlers_(std::move(handlers)),
      readable_(EventSource::onReadable(socket_.get(), [this] { receive(); })) {}

bool LocalSocket::send(std::string_view bytes) const {
  return ::send(socket_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL) ==
         static_cast<ssize_t>(bytes.size());
}

void LocalSocket::receive() {
  std::array<char, std::size_t{64} * 1024> bytes;
  const auto length = recv(socket_.get(), bytes.data(), bytes.size(), 0);
  if (length > 0) {
    handlers_.received({bytes.data(), static_cast<std::size_t>(length)});
  } else if (length == 0 || (errno != EAGAIN && errno != EINTR)) {
    ignore();
    handlers_.ended();
  }
}

}  // namespace nivlo
