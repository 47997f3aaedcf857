#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <list>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "orlan/base/Result.hpp"
#include "tools/orlan/backend/HttpConnection.hpp"

namespace orlan::devbackend {

/// HTTP/1.1 on the loopback, connections kept alive, each on a thread of its own, so that many idle ones
/// never keep a new one waiting. Of our own, because what it is for is what servers are built to hide:
/// headers with empty values, the bytes of what is no HTTP, and answers that end in the middle.
class HttpServer {
 public:
  /// Called on the connection's thread, several at once, also with what was no HTTP request.
  using Handler = std::function<Reply(const Request&)>;

  explicit HttpServer(Handler handler) : handler_(std::move(handler)) {}
  /// Stops.
  ~HttpServer() { stop(); }

  /// Listens on 127.0.0.1; port 0 picks a free one. The port, or why it cannot be had. Once in a lifetime.
  Result<int> start(int port);

  /// Ends every connection, also in the middle of something, and returns when no handler runs any more.
  void stop();

 private:
  struct Peer {
    explicit Peer(linuxphone::FileDescriptor socket) : connection(std::move(socket)) {}
    HttpConnection connection;
    std::atomic<bool> done = false;
    std::thread thread;
  };

  void acceptAll();
  void serve(HttpConnection& connection);

  Handler handler_;
  linuxphone::FileDescriptor listening_;
  std::thread accepting_;
  std::atomic<bool> closing_ = false;
  std::mutex mutex_;
  std::list<Peer> peers_;
};

}  // namespace orlan::devbackend
