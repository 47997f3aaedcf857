#include "linux/LoopbackServer.hpp"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>

#include <charconv>
#include <stdexcept>
#include <utility>

#include "phones/common/Threads.hpp"

namespace orlan::linuxphone::test {
namespace {

std::size_t contentLength(std::string_view head) {
  const auto at = head.find("Content-Length: ");
  std::size_t length = 0;
  if (at != head.npos) std::from_chars(head.data() + at + 16, head.data() + head.size(), length);
  return length;
}

}  // namespace

std::string Peer::readRequest() {
  while (true) {
    const auto end = unread_.find("\r\n\r\n");
    if (end != std::string::npos) {
      const auto whole = end + 4 + contentLength(unread_.substr(0, end + 2));
      if (unread_.size() >= whole) return std::exchange(unread_, unread_.substr(whole)).substr(0, whole);
    }
    if (!readMore()) return {};
  }
}

void Peer::answerEach(const std::function<std::string(const std::string& path)>& reply) {
  for (std::string request = readRequest(); !request.empty(); request = readRequest()) {
    const auto path = request.find(' ') + 1;
    if (!write(reply(request.substr(path, request.find(' ', path) - path)))) return;
  }
}

bool Peer::readMore() {
  char buffer[4096];
  const ssize_t got = ::recv(socket_, buffer, sizeof buffer, 0);
  if (got <= 0) return false;
  unread_.append(buffer, static_cast<std::size_t>(got));
  return true;
}

bool Peer::write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

void Peer::waitForHangUp() {
  while (readMore()) continue;
}

void Peer::wait(std::chrono::milliseconds time) {
  pollfd file{socket_, 0, 0};
  ::poll(&file, 1, static_cast<int>(time.count()));
}

Port::Port() : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  auto* plain = reinterpret_cast<sockaddr*>(&address);
  socklen_t size = sizeof address;
  if (::bind(socket_.get(), plain, size) != 0 || ::getsockname(socket_.get(), plain, &size) != 0) {
    throw std::runtime_error("no port on the loopback");
  }
  port_ = ntohs(address.sin_port);
}

std::string Port::url(const std::string& path) const {
  return "http://127.0.0.1:" + std::to_string(port_) + path;
}

LoopbackServer::LoopbackServer(Script script) : script_(std::move(script)) {
  if (::listen(socket_.get(), 64) != 0) throw std::runtime_error("no loopback server");
  acceptor_ = phone::startThread("acceptor", [this] { acceptAll(); });  // where no SIGPIPE strikes
}

LoopbackServer::~LoopbackServer() {
  ::shutdown(socket_.get(), SHUT_RDWR);  // ends the accepting
  acceptor_.join();
  for (auto& talk : talks_) ::shutdown(talk.socket.get(), SHUT_RDWR);
  for (auto& talk : talks_) talk.thread.join();
}

void LoopbackServer::acceptAll() {
  while (true) {
    FileDescriptor socket(::accept4(socket_.get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (!socket) return;
    ++connections_;
    const timeval patience{5, 0};
    for (const int way : {SO_RCVTIMEO, SO_SNDTIMEO}) {
      ::setsockopt(socket.get(), SOL_SOCKET, way, &patience, sizeof patience);
    }
    const int fd = socket.get();
    auto play = [this, fd] {
      Peer peer(fd);
      script_(peer);
      ::shutdown(fd, SHUT_RDWR);
    };
    talks_.push_back({std::move(socket), std::thread(play)});
  }
}

std::string plainReply(int status, const std::string& body) {
  return "HTTP/1.1 " + std::to_string(status) + " Reason\r\nContent-Length: " + std::to_string(body.size()) +
         "\r\n\r\n" + body;
}

}  // namespace orlan::linuxphone::test
