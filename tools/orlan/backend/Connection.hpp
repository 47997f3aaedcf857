#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "phones/linux/FileDescriptor.hpp"

namespace orlan::devbackend {

/// A descriptor that becomes readable for good when it is rung: how every waiting thread learns of the end.
class Bell {
 public:
  Bell();
  void ring();
  [[nodiscard]] int descriptor() const { return event_.get(); }

 private:
  linuxphone::FileDescriptor event_;
};

/// One accepted connection. Keeps what it reads of a request's head, byte for byte, because the layer above
/// forgets some of it, and can end in the middle of an answer. One thread at a time.
class Connection {
 public:
  using Timeout = std::chrono::milliseconds;

  /// Owns `socket`. `end` must outlive it; when it rings, every wait ends at once.
  Connection(int socket, const Bell& end) : socket_(socket), end_(end) {}

  /// Waits for the first byte of a request and begins to keep its head. False: none came.
  bool awaitRequest(Timeout timeout);

  /// What was read since then; from now on nothing is kept.
  [[nodiscard]] std::string takeHead();

  /// Like read(2) and write(2), but `write` sends everything or fails. -1: fault, timeout or the end.
  long read(char* bytes, std::size_t size);
  long write(std::string_view bytes);

  /// Bytes that have arrived and that nobody has read yet; waits for more when there are none.
  [[nodiscard]] bool isReadable() const { return next_ < buffer_.size(); }

  /// Cuts the connection once so many more bytes were written.
  void cutAfter(std::size_t bytes) { writable_ = bytes; }

  /// Ends the connection now; later writes fail.
  void end();
  [[nodiscard]] bool ended() const { return ended_; }

  [[nodiscard]] int socket() const { return socket_.get(); }

 private:
  bool await(short events, Timeout timeout);
  bool fill(Timeout timeout);

  linuxphone::FileDescriptor socket_;
  const Bell& end_;
  std::string buffer_;
  std::size_t next_ = 0;
  std::string head_;
  bool keeping_ = false;
  bool ended_ = false;
  std::optional<std::size_t> writable_;
};

}  // namespace orlan::devbackend
