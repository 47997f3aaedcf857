#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "phones/linux/FileDescriptor.hpp"
#include "tools/orlan/backend/Request.hpp"

namespace orlan::devbackend {

/// A peer that sends bytes as it is told to, which no HTTP client would.
class RawClient {
 public:
  explicit RawClient(int port);

  void send(std::string_view bytes);

  /// One answer, head and body by its Content-Length; what came until the end when it ended early. Waits for
  /// ten seconds at most, which only a fault can need.
  std::string receive();

  /// Whether the peer has ended the connection, and nothing more is to be read.
  bool ended();

 private:
  bool more();

  linuxphone::FileDescriptor socket_;
  std::string buffer_;
};

/// The request as bytes.
std::string wire(const Request& request);

/// The status of an answer; 0 when there is none.
int statusOf(std::string_view answer);
std::string_view bodyOf(std::string_view answer);

}  // namespace orlan::devbackend
