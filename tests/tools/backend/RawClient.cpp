#include "RawClient.hpp"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <array>

#include "orlan/base/text.hpp"

namespace orlan::devbackend {

RawClient::RawClient(int port) : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  const timeval patience{.tv_sec = 10, .tv_usec = 0};
  ::setsockopt(socket_.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  EXPECT_EQ(::connect(socket_.get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
}

void RawClient::send(std::string_view bytes) {
  EXPECT_EQ(::send(socket_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL),
            static_cast<ssize_t>(bytes.size()));
}

bool RawClient::more() {
  std::array<char, 4096> chunk;
  const auto count = ::recv(socket_.get(), chunk.data(), chunk.size(), 0);
  if (count <= 0) return false;
  buffer_.append(chunk.data(), static_cast<std::size_t>(count));
  return true;
}

std::string RawClient::receive() {
  std::size_t headEnd = 0;
  while ((headEnd = buffer_.find("\r\n\r\n")) == std::string::npos) {
    if (!more()) return std::exchange(buffer_, {});
  }
  const auto head = parseHead(std::string_view(buffer_).substr(0, headEnd));
  const auto* length = findHeader(head, "Content-Length");
  const auto size = headEnd + 4 + static_cast<std::size_t>(length ? text::toInteger(*length).value_or(0) : 0);
  while (buffer_.size() < size) {
    if (!more()) return std::exchange(buffer_, {});
  }
  auto answer = buffer_.substr(0, size);
  buffer_.erase(0, size);
  return answer;
}

bool RawClient::ended() {
  char byte = 0;
  return buffer_.empty() && ::recv(socket_.get(), &byte, 1, 0) == 0;
}

std::string wire(const Request& request) {
  auto bytes = request.method + " " + request.target + " HTTP/1.1\r\n";
  for (const auto& [name, value] : request.headers) bytes += name + ": " + value + "\r\n";
  return bytes + "\r\n" + request.body;
}

int statusOf(std::string_view answer) {
  if (!answer.starts_with("HTTP/1.1 ")) return 0;
  return static_cast<int>(text::toInteger(answer.substr(9, 3)).value_or(0));
}

std::string_view bodyOf(std::string_view answer) {
  const auto end = answer.find("\r\n\r\n");
  return end == std::string_view::npos ? std::string_view() : answer.substr(end + 4);
}

}  // namespace orlan::devbackend
