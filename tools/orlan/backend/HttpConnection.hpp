#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "phones/linux/FileDescriptor.hpp"
#include "tools/orlan/backend/Request.hpp"

namespace orlan::devbackend {

/// What goes back, or does not.
struct Reply {
  int status = 200;
  std::string contentType = {};
  std::string body = {};
  std::optional<std::size_t> cutAfter = {};  // the connection ends after so many bytes of the answer
  std::optional<std::string> raw = {};       // these bytes instead of an HTTP answer, then the end
};

/// One accepted connection, which hands requests on as they stood on the wire. One thread at a time but for
/// `end`. Every wait ends with the connection, or after a minute between requests and ten seconds inside one.
class HttpConnection {
 public:
  explicit HttpConnection(linuxphone::FileDescriptor socket);

  /// Waits for the first byte of a request. False: none came.
  bool awaitRequest();

  /// The request, or what came instead.
  Request read();

  /// Answers what was read last.
  void answer(const Reply& reply);

  /// Whether nothing more can follow on this connection.
  [[nodiscard]] bool isLast() const { return isLast_; }

  /// Ends it now, on any thread; the peer sees it at once.
  void end();

 private:
  bool fill();
  bool send(std::string_view bytes);
  std::size_t awaitHead();
  std::optional<std::string> takeLine();
  bool takeBytes(std::size_t count, std::string& to);
  bool readBody(Request& request);
  bool readChunks(std::string& body);

  linuxphone::FileDescriptor socket_;
  std::string buffer_;
  bool isLast_ = false;
  bool isHead_ = false;  // the method HEAD: an answer without its body
};

}  // namespace orlan::devbackend
