#include "RawClient.hpp"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <array>

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

std::string RawClient::receive() {
  constexpr std::string_view length = "Content-Length: ";
  for (std::array<char, 4096> chunk;;) {
    const auto headEnd = buffer_.find("\r\n\r\n");
    if (headEnd != std::string::npos) {
      const auto at = buffer_.find(length);
      const auto size = headEnd + 4 + (at < headEnd ? std::stoul(buffer_.substr(at + length.size())) : 0);
      if (buffer_.size() >= size) {
        auto answer = buffer_.substr(0, size);
        buffer_.erase(0, size);
        return answer;
      }
    }
    const auto count = ::recv(socket_.get(), chunk.data(), chunk.size(), 0);
    EXPECT_GE(count, 0) << "no answer and no end";
    if (count <= 0) return std::exchange(buffer_, {});
    buffer_.append(chunk.data(), static_cast<std::size_t>(count));
  }
}

std::string ask(int port, std::string_view bytes) {
  RawClient client(port);
  client.send(bytes);
  return client.receive();
}

}  // namespace orlan::devbackend
