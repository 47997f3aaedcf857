#include "tools/orlan/backend/Connection.hpp"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>

namespace orlan::devbackend {
namespace {

constexpr Connection::Timeout midRequest = std::chrono::seconds(10);

}  // namespace

Bell::Bell() : event_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

void Bell::ring() {
  const std::uint64_t once = 1;
  // It can only fail when it has rung so often that it would overflow.
  [[maybe_unused]] const auto written = ::write(event_.get(), &once, sizeof once);
}

bool Connection::await(short events, Timeout timeout) {
  std::array<pollfd, 2> waiting{pollfd{socket_.get(), events, 0}, pollfd{end_.descriptor(), POLLIN, 0}};
  const auto until = std::chrono::steady_clock::now() + timeout;
  for (;;) {
    const auto left = std::chrono::ceil<Timeout>(until - std::chrono::steady_clock::now());
    const int ready =
        ::poll(waiting.data(), waiting.size(), static_cast<int>(std::max<Timeout::rep>(left.count(), 0)));
    if (ready < 0 && errno == EINTR) continue;
    return ready > 0 && waiting[1].revents == 0;
  }
}

bool Connection::fill(Timeout timeout) {
  if (next_ < buffer_.size()) return true;
  if (ended_ || !await(POLLIN, timeout)) return false;
  std::array<char, 16384> chunk;
  const auto count = ::recv(socket_.get(), chunk.data(), chunk.size(), 0);
  if (count <= 0) return false;
  buffer_.assign(chunk.data(), static_cast<std::size_t>(count));
  next_ = 0;
  return true;
}

bool Connection::awaitRequest(Timeout timeout) {
  if (!fill(timeout)) return false;
  head_.clear();
  keeping_ = true;
  return true;
}

std::string Connection::takeHead() {
  keeping_ = false;
  return std::exchange(head_, {});
}

long Connection::read(char* bytes, std::size_t size) {
  if (!fill(midRequest)) return -1;
  const auto count = std::min(size, buffer_.size() - next_);
  std::copy_n(buffer_.data() + next_, count, bytes);
  if (keeping_) head_.append(bytes, count);
  next_ += count;
  return static_cast<long>(count);
}

long Connection::write(std::string_view bytes) {
  const bool cut = writable_ && *writable_ < bytes.size();
  auto rest = cut ? bytes.substr(0, *writable_) : bytes;
  if (writable_) *writable_ -= rest.size();
  while (!rest.empty()) {
    if (ended_ || !await(POLLOUT, midRequest)) return -1;
    const auto sent = ::send(socket_.get(), rest.data(), rest.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent < 0 && errno != EAGAIN && errno != EINTR) return -1;
    if (sent > 0) rest.remove_prefix(static_cast<std::size_t>(sent));
  }
  if (cut || (writable_ && *writable_ == 0)) end();
  return ended_ ? -1 : static_cast<long>(bytes.size());
}

void Connection::end() {
  if (ended_) return;
  ended_ = true;
  ::shutdown(socket_.get(), SHUT_RDWR);
}

}  // namespace orlan::devbackend
