#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <list>
#include <string>
#include <string_view>
#include <thread>

#include "phones/linux/FileDescriptor.hpp"

namespace orlan::linuxphone::test {

/// The server's end of one connection, byte for byte. Every wait ends when the client hangs up, when the
/// server ends, or after a few seconds.
class Peer {
 public:
  explicit Peer(int socket) : socket_(socket) {}

  /// The next request, head and body, as it came; empty when there is none any more.
  std::string readRequest();

  /// Answers every request by its path.
  void answerEach(const std::function<std::string(const std::string& path)>& reply);

  /// False when the client is gone.
  bool write(std::string_view bytes);

  void waitForHangUp();

  /// Lets time pass, unless the connection ends meanwhile.
  void wait(std::chrono::milliseconds time);

  [[nodiscard]] int socket() const { return socket_; }

 private:
  bool readMore();

  int socket_;
  std::string unread_;
};

/// A port of the loopback that is taken and, by itself, refuses every connection.
class Port {
 public:
  Port();
  [[nodiscard]] std::string url(const std::string& path = "/") const;
  [[nodiscard]] int port() const { return port_; }

 protected:
  FileDescriptor socket_;

 private:
  int port_ = 0;
};

/// A server on such a port that plays `script` on a thread for each connection.
class LoopbackServer : public Port {
 public:
  using Script = std::function<void(Peer&)>;

  explicit LoopbackServer(Script script);
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;
  ~LoopbackServer();

  [[nodiscard]] int connections() const { return connections_; }

 private:
  struct Talk {
    FileDescriptor socket;
    std::thread thread;
  };
  void acceptAll();

  Script script_;
  std::atomic<int> connections_ = 0;
  std::list<Talk> talks_;  // the acceptor's
  std::thread acceptor_;
};

/// "HTTP/1.1 200 Reason" with `body` and its length.
[[nodiscard]] std::string plainReply(int status, const std::string& body);

}  // namespace orlan::linuxphone::test
