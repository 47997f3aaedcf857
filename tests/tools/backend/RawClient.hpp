#pragma once

#include <string>
#include <string_view>

#include "phones/linux/FileDescriptor.hpp"

namespace orlan::devbackend {

/// A peer that sends bytes as it is told to, which no HTTP client would.
class RawClient {
 public:
  explicit RawClient(int port);

  void send(std::string_view bytes);

  /// One answer, head and body by its Content-Length; what came until the end when it ended early. Waits for
  /// ten seconds at most, which only a fault can need.
  std::string receive();

 private:
  linuxphone::FileDescriptor socket_;
  std::string buffer_;
};

/// What a connection of its own is answered to these bytes.
std::string ask(int port, std::string_view bytes);

}  // namespace orlan::devbackend
