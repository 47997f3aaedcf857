#include "tools/orlan/backend/HttpConnection.hpp"

#include <fmt/format.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>

#include "orlan/base/ascii.hpp"
#include "orlan/base/text.hpp"

namespace orlan::devbackend {
namespace {

constexpr std::size_t largestHead = 64U << 10U;
constexpr std::size_t largestBody = 64U << 20U;
constexpr int betweenRequests = 60;  // seconds
constexpr int insideOne = 10;

void setPatience(int socket, int option, int seconds) {
  const timeval time{.tv_sec = seconds, .tv_usec = 0};
  ::setsockopt(socket, SOL_SOCKET, option, &time, sizeof time);
}

std::string_view withoutBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// Up to the line's end, which is taken, too.
std::string_view takeLineOf(std::string_view& rest) {
  auto line = rest.substr(0, rest.find('\n'));
  rest.remove_prefix(std::min(line.size() + 1, rest.size()));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

/// "GET /path HTTP/1.1": the version's last digit; nothing when it is no request line.
std::optional<char> versionOf(std::string_view line) {
  const auto method = line.find(' ');
  const auto target = line.find(' ', method + 1);
  if (method == 0 || method == std::string_view::npos || target == std::string_view::npos)
    return std::nullopt;
  if (target == method + 1) return std::nullopt;
  const auto version = line.substr(target + 1);
  return version == "HTTP/1.1" || version == "HTTP/1.0" ? std::optional(version.back()) : std::nullopt;
}

/// A request line and header lines; lines that are no header are skipped.
Request parseHead(std::string_view head) {
  Request request;
  const auto first = takeLineOf(head);
  const auto method = first.find(' ');
  request.method = first.substr(0, method);
  request.target = first.substr(method + 1, first.rfind(' ') - method - 1);
  while (!head.empty()) {
    const auto line = takeLineOf(head);
    const auto colon = line.find(':');
    if (colon == std::string_view::npos || colon == 0) continue;
    request.headers.emplace_back(line.substr(0, colon), withoutBlanks(line.substr(colon + 1)));
  }
  return request;
}

bool says(const Request& request, std::string_view header, std::string_view value) {
  const auto* found = findHeader(request, header);
  return found != nullptr && ascii::equalsIgnoringCase(*found, value);
}

}  // namespace

HttpConnection::HttpConnection(linuxphone::FileDescriptor socket) : socket_(std::move(socket)) {
  const int yes = 1;
  ::setsockopt(socket_.get(), IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
  setPatience(socket_.get(), SO_SNDTIMEO, insideOne);
}

void HttpConnection::end() {
  ::shutdown(socket_.get(), SHUT_RDWR);
}

bool HttpConnection::fill() {
  std::array<char, 16384> chunk;
  ssize_t count = -1;
  do {
    count = ::recv(socket_.get(), chunk.data(), chunk.size(), 0);
  } while (count < 0 && errno == EINTR);
  if (count <= 0) return false;
  buffer_.append(chunk.data(), static_cast<std::size_t>(count));
  return true;
}

bool HttpConnection::send(std::string_view bytes) {
  while (!bytes.empty()) {
    const auto sent = ::send(socket_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent < 0 && errno != EINTR) return false;
    bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(sent, 0)));
  }
  return true;
}

bool HttpConnection::awaitRequest() {
  setPatience(socket_.get(), SO_RCVTIMEO, betweenRequests);
  const bool came = !buffer_.empty() || fill();
  setPatience(socket_.get(), SO_RCVTIMEO, insideOne);
  return came;
}

/// How long the head is that stands in front; 0 when it is no request's, is too long or breaks off.
std::size_t HttpConnection::awaitHead() {
  for (;;) {
    std::size_t begin = 0;
    for (auto end = buffer_.find('\n'); end != std::string::npos; end = buffer_.find('\n', begin)) {
      auto line = std::string_view(buffer_).substr(begin, end - begin);
      if (!line.ends_with('\r')) return 0;
      line.remove_suffix(1);
      if (begin == 0 && !versionOf(line)) return 0;
      begin = end + 1;
      if (line.empty()) return begin;
    }
    if (buffer_.size() > largestHead || !fill()) return 0;
  }
}

Request HttpConnection::read() {
  const auto size = awaitHead();
  isLast_ = size == 0;
  if (isLast_) return {.body = std::exchange(buffer_, {}), .isWhole = false};
  auto head = std::string_view(buffer_).substr(0, size);
  auto request = parseHead(head);
  const bool isOld = versionOf(takeLineOf(head)) == '0';
  buffer_.erase(0, size);
  isHead_ = request.method == "HEAD";
  request.isWhole = readBody(request);
  isLast_ = isOld || !request.isWhole || says(request, "Connection", "close");
  return request;
}

bool HttpConnection::readBody(Request& request) {
  if (says(request, "Expect", "100-continue") && !send("HTTP/1.1 100 Continue\r\n\r\n")) return false;
  if (findHeader(request, "Transfer-Encoding") != nullptr) {
    return says(request, "Transfer-Encoding", "chunked") && readChunks(request.body);
  }
  const auto* length = findHeader(request, "Content-Length");
  if (length == nullptr) return true;
  const auto size = text::toInteger(*length);
  return size && *size >= 0 && takeBytes(static_cast<std::size_t>(*size), request.body);
}

bool HttpConnection::readChunks(std::string& body) {
  for (;;) {
    const auto line = takeLine();
    if (!line) return false;
    std::size_t size = 0;
    const auto read = std::from_chars(line->data(), line->data() + line->size(), size, 16);
    if (read.ec != std::errc{}) return false;  // what may follow the size is nobody's
    if (size == 0) break;
    if (!takeBytes(size, body) || takeLine() != "") return false;
  }
  for (;;) {  // trailers
    const auto line = takeLine();
    if (!line || line->empty()) return line.has_value();
  }
}

std::optional<std::string> HttpConnection::takeLine() {
  while (buffer_.find('\n') == std::string::npos) {
    if (buffer_.size() > largestHead || !fill()) return std::nullopt;
  }
  std::string_view rest = buffer_;
  std::string line(takeLineOf(rest));
  buffer_.erase(0, buffer_.size() - rest.size());
  return line;
}

/// What is too large is read all the same, or a peer that is still sending would never see the answer.
bool HttpConnection::takeBytes(std::size_t count, std::string& to) {
  const bool keep = count <= largestBody - to.size();
  while (count > 0) {
    if (buffer_.empty() && !fill()) return false;
    const auto piece = std::min(count, buffer_.size());
    if (keep) to.append(buffer_, 0, piece);
    buffer_.erase(0, piece);
    count -= piece;
  }
  return keep;
}

void HttpConnection::answer(const Reply& reply) {
  isLast_ = isLast_ || reply.raw || reply.cutAfter;
  std::string bytes;
  if (reply.raw) {
    bytes = *reply.raw;
  } else {
    // The reason is left out: everybody reads the number.
    bytes = fmt::format("HTTP/1.1 {} \r\n", reply.status);
    if (!reply.body.empty()) bytes += fmt::format("Content-Type: {}\r\n", reply.contentType);
    bytes += fmt::format("Content-Length: {}\r\n{}\r\n", reply.body.size(),
                         isLast_ ? "Connection: close\r\n" : "");
    if (!isHead_) bytes += reply.body;
  }
  if (!send(std::string_view(bytes).substr(0, reply.cutAfter.value_or(bytes.size())))) isLast_ = true;
}

}  // namespace orlan::devbackend
