#include "tools/orlan/backend/HttpServer.hpp"

#include <arpa/inet.h>
#include <fmt/format.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <chrono>

namespace orlan::devbackend {

Result<int> HttpServer::start(int port) {
  listening_ = linuxphone::FileDescriptor(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const int yes = 1;
  ::setsockopt(listening_.get(), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  socklen_t size = sizeof address;
  if (::bind(listening_.get(), generic, size) != 0 || ::listen(listening_.get(), SOMAXCONN) != 0 ||
      ::getsockname(listening_.get(), generic, &size) != 0) {
    return Unexpected(Error{"orlan backend", -1, fmt::format("port {}: taken, or not allowed", port)});
  }
  accepting_ = std::thread([this] { acceptAll(); });
  return ntohs(address.sin_port);
}

void HttpServer::acceptAll() {
  while (!closing_) {
    linuxphone::FileDescriptor socket(::accept4(listening_.get(), nullptr, nullptr, SOCK_CLOEXEC));
    const std::scoped_lock lock(mutex_);
    peers_.remove_if([](Peer& peer) {
      if (!peer.done) return false;
      peer.thread.join();
      return true;
    });
    if (closing_) return;
    if (!socket) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));  // too many files are open
      continue;
    }
    auto& peer = peers_.emplace_back(std::move(socket));
    peer.thread = std::thread([this, &peer] {
      serve(peer.connection);
      peer.connection.end();
      peer.done = true;
    });
  }
}

void HttpServer::serve(HttpConnection& connection) {
  while (!connection.isLast() && connection.awaitRequest()) {
    const auto request = connection.read();
    if (closing_ && !request.isWhole) return;  // half a request is nothing that arrived
    connection.answer(handler_(request));
  }
}

void HttpServer::stop() {
  {
    const std::scoped_lock lock(mutex_);
    closing_ = true;
    for (auto& peer : peers_) peer.connection.end();
  }
  ::shutdown(listening_.get(), SHUT_RDWR);  // wakes the accepting thread
  if (accepting_.joinable()) accepting_.join();
  for (auto& peer : peers_) peer.thread.join();
  peers_.clear();
  listening_.close();
}

}  // namespace orlan::devbackend
