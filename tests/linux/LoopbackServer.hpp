#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <list>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "phones/linux/FileDescriptor.hpp"

namespace orlan::linuxphone::test {

/// The server's end of one connection, byte for byte. Every wait ends when the client hangs up, when the
/// server ends, or after a few seconds.
class Peer {
 public:
  Peer(int socket, int serverEnds) : socket_(socket), serverEnds_(serverEnds) {}

  /// The next request, head and body, as it came; empty when there is none any more.
  std::string readRequest();

  /// False when the client is gone.
  bool write(std::string_view bytes);

  /// Closes our direction now.
  void close();

  /// Until the client hangs up.
  void waitForHangUp();

  /// Lets time pass, unless the server ends meanwhile.
  void wait(std::chrono::milliseconds time);

  [[nodiscard]] int socket() const { return socket_; }

 private:
  [[nodiscard]] bool readable();
  bool readMore();

  int socket_;
  int serverEnds_;
  std::string unread_;
};

/// A server on a port of its own of the loopback that plays `script` on a thread for each connection.
class LoopbackServer {
 public:
  using Script = std::function<void(Peer&)>;

  explicit LoopbackServer(Script script);
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;
  ~LoopbackServer();

  [[nodiscard]] std::string url(const std::string& path = "/") const;
  [[nodiscard]] int port() const { return port_; }
  [[nodiscard]] int connections() const { return connections_; }

 private:
  void acceptAll();

  Script script_;
  FileDescriptor listener_;
  FileDescriptor ends_;  // readable once the server ends
  int port_ = 0;
  std::atomic<int> connections_ = 0;
  std::list<std::thread> talkers_;  // the acceptor's
  std::thread acceptor_;
};

/// A port of the loopback that is taken and refuses every connection.
class RefusingPort {
 public:
  RefusingPort();
  [[nodiscard]] std::string url() const;

 private:
  FileDescriptor socket_;
  int port_ = 0;
};

/// "HTTP/1.1 200 Reason" with `body` and its length.
[[nodiscard]] std::string plainReply(int status, const std::string& body);

}  // namespace orlan::linuxphone::test
