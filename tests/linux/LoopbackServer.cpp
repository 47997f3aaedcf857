#include "linux/LoopbackServer.hpp"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>

#include <charconv>
#include <cstdint>
#include <stdexcept>

#include "phones/common/Threads.hpp"

namespace orlan::linuxphone::test {
namespace {

constexpr int patienceMs = 5000;

std::size_t contentLength(std::string_view head) {
  const auto at = head.find("Content-Length: ");
  std::size_t length = 0;
  if (at != head.npos) std::from_chars(head.data() + at + 16, head.data() + head.size(), length);
  return length;
}

/// The socket's new port on the loopback.
int bindAnywhere(int socket) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  auto* plain = reinterpret_cast<sockaddr*>(&address);
  socklen_t size = sizeof address;
  if (::bind(socket, plain, size) != 0 || ::getsockname(socket, plain, &size) != 0) {
    throw std::runtime_error("no port on the loopback");
  }
  return ntohs(address.sin_port);
}

std::string urlAt(int port, const std::string& path) {
  return "http://127.0.0.1:" + std::to_string(port) + path;
}

}  // namespace

std::string Peer::readRequest() {
  while (true) {
    const auto end = unread_.find("\r\n\r\n");
    if (end != std::string::npos) {
      const std::size_t whole = end + 4 + contentLength(unread_.substr(0, end + 2));
      while (unread_.size() < whole) {
        if (!readMore()) return {};
      }
      std::string request = unread_.substr(0, whole);
      unread_.erase(0, whole);
      return request;
    }
    if (!readMore()) return {};
  }
}

bool Peer::readable() {
  pollfd files[] = {{socket_, POLLIN, 0}, {serverEnds_, POLLIN, 0}};
  return ::poll(files, 2, patienceMs) > 0 && files[1].revents == 0;
}

bool Peer::readMore() {
  char buffer[4096];
  if (!readable()) return false;
  const ssize_t got = ::recv(socket_, buffer, sizeof buffer, 0);
  if (got <= 0) return false;
  unread_.append(buffer, static_cast<std::size_t>(got));
  return true;
}

bool Peer::write(std::string_view bytes) {
  while (!bytes.empty()) {
    pollfd files[] = {{socket_, POLLOUT, 0}, {serverEnds_, POLLIN, 0}};
    if (::poll(files, 2, patienceMs) <= 0 || files[1].revents != 0) return false;
    const ssize_t sent = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

void Peer::close() {
  ::shutdown(socket_, SHUT_WR);
}

void Peer::waitForHangUp() {
  while (readMore()) continue;
}

void Peer::wait(std::chrono::milliseconds time) {
  pollfd file{serverEnds_, POLLIN, 0};
  ::poll(&file, 1, static_cast<int>(time.count()));
}

LoopbackServer::LoopbackServer(Script script)
    : script_(std::move(script)),
      listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)),
      ends_(::eventfd(0, EFD_CLOEXEC)) {
  port_ = bindAnywhere(listener_.get());
  if (::listen(listener_.get(), 64) != 0) throw std::runtime_error("no loopback server");
  acceptor_ = phone::startThread("acceptor", [this] { acceptAll(); });  // no signals here: SIGPIPE
}

LoopbackServer::~LoopbackServer() {
  const std::uint64_t one = 1;
  (void)!::write(ends_.get(), &one, sizeof one);
  acceptor_.join();
  for (auto& talker : talkers_) talker.join();
}

void LoopbackServer::acceptAll() {
  while (true) {
    pollfd files[] = {{listener_.get(), POLLIN, 0}, {ends_.get(), POLLIN, 0}};
    if (::poll(files, 2, -1) < 0 || files[1].revents != 0) return;
    const int socket = ::accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC);
    if (socket < 0) continue;
    ++connections_;
    talkers_.emplace_back([this, socket] {
      const FileDescriptor owned(socket);
      Peer peer(socket, ends_.get());
      script_(peer);
    });
  }
}

std::string LoopbackServer::url(const std::string& path) const {
  return urlAt(port_, path);
}

RefusingPort::RefusingPort() : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  port_ = bindAnywhere(socket_.get());
}

std::string RefusingPort::url() const {
  return urlAt(port_, "/");
}

std::string plainReply(int status, const std::string& body) {
  return "HTTP/1.1 " + std::to_string(status) + " Reason\r\nContent-Length: " + std::to_string(body.size()) +
         "\r\n\r\n" + body;
}

}  // namespace orlan::linuxphone::test
