#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "orlan/base/Result.hpp"
#include "tools/orlan/backend/Request.hpp"

namespace orlan::devbackend {

/// What goes back, or does not.
struct Reply {
  int status = 200;
  std::string contentType;
  std::string body;
  std::optional<std::size_t> cutAfter;  // the connection ends after so many bytes of the answer
  std::optional<std::string> raw;       // these bytes instead of an HTTP answer, then the end
};

/// HTTP/1.1 on the loopback, connections kept alive, each on a thread of its own. The HTTP library reads and
/// writes the protocol; requests are handed on as they stood on the wire, headers with empty values and raw
/// multipart bodies included, which that library by itself would drop or take apart.
class HttpServer {
 public:
  /// Called on the connection's thread, several at once.
  using Handler = std::function<Reply(const Request&)>;
  /// What came and was no HTTP request; it has been answered with 400.
  using Unreadable = std::function<void(std::string_view bytes)>;

  HttpServer(Handler handler, Unreadable unreadable);
  /// Stops.
  ~HttpServer();

  /// Listens on 127.0.0.1; port 0 picks a free one. The port, or why it cannot be had. Once in a lifetime.
  Result<int> start(int port);

  /// Ends every connection, also in the middle of something, and returns when no handler runs any more.
  void stop();

 private:
  class Server;
  std::unique_ptr<Server> server_;
};

}  // namespace orlan::devbackend
