#include "tools/orlan/backend/HttpServer.hpp"

#include <fmt/format.h>
#include <httplib.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <latch>
#include <thread>
#include <utility>

#include "tools/orlan/backend/Connection.hpp"
#include "tools/orlan/backend/ConnectionThreads.hpp"

namespace orlan::devbackend {
namespace {

constexpr char everyPath[] = R"([\s\S]*)";
constexpr std::size_t largestBody = 64U << 20U;
constexpr int keptAlive = 60;  // seconds between two requests on a connection

/// Our connection as the HTTP library sees it.
class ConnectionStream final : public httplib::Stream {
 public:
  /// `beforeWrite` is called before anything is written.
  ConnectionStream(Connection& connection, std::function<void()> beforeWrite)
      : connection_(connection), beforeWrite_(std::move(beforeWrite)) {}

  bool is_readable() const override { return connection_.isReadable(); }
  bool is_writable() const override { return !connection_.ended(); }
  ssize_t read(char* bytes, std::size_t size) override { return connection_.read(bytes, size); }
  ssize_t write(const char* bytes, std::size_t size) override {
    beforeWrite_();
    return connection_.write({bytes, size});
  }
  void get_remote_ip_and_port(std::string&, int&) const override {}
  void get_local_ip_and_port(std::string&, int&) const override {}
  socket_t socket() const override { return connection_.socket(); }

 private:
  Connection& connection_;
  std::function<void()> beforeWrite_;
};

class ThreadQueue final : public httplib::TaskQueue {
 public:
  void enqueue(std::function<void()> task) override { threads_.run(std::move(task)); }
  void shutdown() override { threads_.join(); }

 private:
  ConnectionThreads threads_;
};

/// The request that this thread is reading. The library's handlers are given no way back to the connection.
struct Current {
  Connection& connection;
  Request request;
  bool hasHead = false;  // the library understood it
  bool reported = false;
  bool handled = false;
  bool last = false;
};
thread_local Current* current = nullptr;

/// Takes the head as it arrived, and makes the library's own copy harmless: without a length it would read
/// until the peer hangs up, it would take multipart bodies apart, pick ranges out of the answer or pack it.
void adopt(httplib::Request& request) {
  current->request = parseHead(current->connection.takeHead());
  current->hasHead = true;
  request.ranges.clear();
  for (const auto* name : {"Content-Type", "Content-Encoding", "Accept-Encoding", "Range"}) {
    request.headers.erase(name);
  }
  if (!request.has_header("Content-Length") && !request.has_header("Transfer-Encoding")) {
    request.headers.emplace("Content-Length", "0");
  }
}

}  // namespace

class HttpServer::Server final : public httplib::Server {
 public:
  Server(HttpServer::Handler handler, HttpServer::Unreadable unreadable)
      : handler_(std::move(handler)), unreadable_(std::move(unreadable)) {
    const auto plain = [this](const httplib::Request& request, httplib::Response& response) {
      readUnusualBody(request);
      reply(response);
    };
    const auto withBody = [this](const httplib::Request&, httplib::Response& response,
                                 const httplib::ContentReader& read) {
      current->request.isWhole = read([](const char* bytes, std::size_t size) {
        current->request.body.append(bytes, size);
        return true;
      });
      reply(response);
    };
    Get(everyPath, plain).Options(everyPath, plain);
    Post(everyPath, withBody).Put(everyPath, withBody).Patch(everyPath, withBody);
    Delete(everyPath, httplib::Server::HandlerWithContentReader(withBody));
    set_tcp_nodelay(true);
    set_payload_max_length(largestBody);
    set_keep_alive_timeout(keptAlive);
    set_keep_alive_max_count(1'000'000);
    // The library's own options let two servers share a port, each getting half of the connections.
    set_socket_options([](socket_t socket) {
      const int yes = 1;
      ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    });
  }

  Result<int> open(int port) {
    constexpr char host[] = "127.0.0.1";
    if (port == 0) {
      port = bind_to_any_port(host);
    } else if (!bind_to_port(host, port)) {
      port = -1;
    }
    if (port <= 0) return Unexpected(Error{"orlan backend", -1, "the port cannot be had"});
    // The library queues five connections; the sixth of a burst would try again a second later.
    ::listen(svr_sock_, SOMAXCONN);
    new_task_queue = [this] {
      accepting_.count_down();
      return new ThreadQueue;
    };
    thread_ = std::thread([this] { listen_after_bind(); });
    accepting_.wait();  // before that, stopping would be lost on the library
    return port;
  }

  void close() {
    if (!thread_.joinable()) return;
    closing_ = true;
    end_.ring();
    // The accepting thread wakes on the shutdown and sees that no socket is left. It is closed only after
    // that thread has ended, so that it can never accept on a number that means something else by then.
    const auto listening = svr_sock_.exchange(INVALID_SOCKET);
    ::shutdown(listening, SHUT_RDWR);
    thread_.join();
    ::close(listening);
  }

 private:
  bool process_and_close_socket(socket_t socket) override {
    Connection connection(socket, end_);
    ConnectionStream stream(connection, [this] { reportUnreadable(); });
    bool last = false;
    while (!last && !connection.ended() && connection.awaitRequest(std::chrono::seconds(keptAlive))) {
      Current reading{.connection = connection, .request = {}};
      current = &reading;
      const bool ok = process_request(stream, false, last, adopt);
      if (!reading.handled) reportUnreadable();
      current = nullptr;
      if (!ok || !reading.handled || reading.last) break;
    }
    return true;
  }

  /// Tells of a head that the library refused, as soon as it answers it or gives up.
  void reportUnreadable() {
    if (current->hasHead || current->reported || closing_) return;
    current->reported = true;
    unreadable_(current->connection.takeHead());
  }

  /// The library never reads a body that it does not expect, such as that of a GET.
  static void readUnusualBody(const httplib::Request& request) {
    auto left = request.get_header_value<std::uint64_t>("Content-Length");
    while (left > 0 && current->request.body.size() < largestBody) {
      std::array<char, 4096> chunk;
      const auto count = current->connection.read(chunk.data(), std::min<std::uint64_t>(left, chunk.size()));
      if (count <= 0) break;
      current->request.body.append(chunk.data(), static_cast<std::size_t>(count));
      left -= static_cast<std::uint64_t>(count);
    }
    current->request.isWhole = left == 0;
  }

  void reply(httplib::Response& response) {
    current->handled = true;
    const auto reply = handler_(current->request);
    current->last = !current->request.isWhole || reply.cutAfter.has_value();
    auto& connection = current->connection;
    if (reply.raw) {
      connection.write(*reply.raw);
      connection.end();
    } else if (reply.cutAfter == std::size_t{0}) {
      connection.end();
    } else if (reply.cutAfter) {
      connection.cutAfter(*reply.cutAfter);
    }
    response.status = reply.status;
    if (!reply.body.empty()) response.set_content(reply.body, reply.contentType);
  }

  HttpServer::Handler handler_;
  HttpServer::Unreadable unreadable_;
  Bell end_;
  std::atomic<bool> closing_ = false;
  std::latch accepting_{1};
  std::thread thread_;
};

HttpServer::HttpServer(Handler handler, Unreadable unreadable)
    : server_(std::make_unique<Server>(std::move(handler), std::move(unreadable))) {}

HttpServer::~HttpServer() {
  stop();
}

Result<int> HttpServer::start(int port) {
  return server_->open(port);
}

void HttpServer::stop() {
  server_->close();
}

}  // namespace orlan::devbackend
