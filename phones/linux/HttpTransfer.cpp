#include "phones/linux/HttpTransfer.hpp"

#include <fmt/format.h>

#include <algorithm>

#include "orlan/base/ascii.hpp"
#include "orlan/base/text.hpp"

namespace orlan::linuxphone {
namespace {

bool hasHeader(const HttpRequest& request, std::string_view name) {
  return std::any_of(request.headers.begin(), request.headers.end(),
                     [&](const HttpHeader& header) { return ascii::equalsIgnoringCase(header.first, name); });
}

bool isBlank(const std::string& text) {
  return text.find_first_not_of(" \t") == std::string::npos;
}

std::chrono::steady_clock::time_point deadlineAfter(Duration timeout) {
  constexpr Duration longest = std::chrono::hours(24 * 365);
  return std::chrono::steady_clock::now() + std::clamp(timeout, Duration(0), longest);
}

}  // namespace

HttpTransfer::HttpTransfer(HttpRequest request, const HttpOptions& options)
    : deadline_(deadlineAfter(request.timeout)),
      request_(std::move(request)),
      options_(options),
      easy_(curl_easy_init()) {
  if (easy_) setUp();
}

void HttpTransfer::setUp() {
  CURL* curl = easy();
  curl_easy_setopt(curl, CURLOPT_URL, request_.url.c_str());
  curl_easy_setopt(curl, CURLOPT_PATH_AS_IS, 1L);  // the path goes out as it was given, dots included
  curl_easy_setopt(curl, CURLOPT_ERRORBUFFER, detail_.data());
  curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(curl, CURLOPT_QUICK_EXIT, 1L);  // else a dead name server holds the thread at the end
  curl_easy_setopt(curl, CURLOPT_HEADERFUNCTION, &HttpTransfer::onHeader);
  curl_easy_setopt(curl, CURLOPT_HEADERDATA, this);
  curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, &HttpTransfer::onBody);
  curl_easy_setopt(curl, CURLOPT_WRITEDATA, this);
  curl_easy_setopt(curl, CURLOPT_PREREQFUNCTION, &HttpTransfer::onRequestStarting);
  curl_easy_setopt(curl, CURLOPT_PREREQDATA, this);
  setUpSecurity();
  setUpMethodAndBody();
  setUpHeaders();
}

void HttpTransfer::setUpSecurity() {
  CURL* curl = easy();
  const bool isPlain = !ascii::equalsIgnoringCase(std::string_view(request_.url).substr(0, 6), "https:");
  curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, isPlain ? "http" : "https");
  curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 0L);  // keys must not travel to a second host
  curl_easy_setopt(curl, CURLOPT_SSL_VERIFYPEER, 1L);
  curl_easy_setopt(curl, CURLOPT_SSL_VERIFYHOST, 2L);
  curl_easy_setopt(curl, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
  curl_easy_setopt(curl, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
  if (!options_.extraCaFile.empty()) curl_easy_setopt(curl, CURLOPT_CAINFO, options_.extraCaFile.c_str());
  if (isPlain) curl_easy_setopt(curl, CURLOPT_PROXY, "");  // the environment's proxy would see it all
}

void HttpTransfer::setUpMethodAndBody() {
  CURL* curl = easy();
  const std::string& method = request_.method;
  const bool expectsBody = method == "POST" || method == "PUT" || method == "PATCH";
  if (request_.body || expectsBody) {
    const std::string_view body = request_.body ? std::string_view(*request_.body) : std::string_view("");
    curl_easy_setopt(curl, CURLOPT_POST, 1L);
    curl_easy_setopt(curl, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    curl_easy_setopt(curl, CURLOPT_POSTFIELDS, body.data());  // not copied: the request lives as long
  } else if (method == "HEAD") {
    curl_easy_setopt(curl, CURLOPT_NOBODY, 1L);
  } else {
    curl_easy_setopt(curl, CURLOPT_HTTPGET, 1L);
  }
  curl_easy_setopt(curl, CURLOPT_CUSTOMREQUEST, method.c_str());
}

void HttpTransfer::setUpHeaders() {
  auto add = [this](const std::string& line) {
    if (curl_slist* longer = curl_slist_append(headers_.get(), line.c_str())) {
      (void)headers_.release();
      headers_.reset(longer);
    }
  };
  for (const auto& [name, value] : request_.headers) {
    if (ascii::equalsIgnoringCase(name, "Content-Length")) continue;  // the body says it better
    // "name:" would take the header away; "name;" sends it with nothing behind it.
    add(isBlank(value) ? name + ";" : name + ": " + value);
  }
  for (const char* own : {"Accept", "Expect", "Content-Type", "User-Agent"}) {
    if (!hasHeader(request_, own)) add(std::string(own) + ":");  // what libcurl would add on its own
  }
  curl_easy_setopt(easy(), CURLOPT_HTTPHEADER, headers_.get());
}

std::size_t HttpTransfer::onHeader(char* data, std::size_t size, std::size_t count, void* self) {
  auto& transfer = *static_cast<HttpTransfer*>(self);
  const std::size_t bytes = size * count;
  const std::string_view line(data, bytes);
  if (line.starts_with("HTTP/")) transfer.headersEnded_ = false;  // perhaps after an interim response
  if (line == "\r\n" || line == "\n") transfer.headersEnded_ = true;
  transfer.headerBytes_ += bytes;
  if (transfer.headerBytes_ <= transfer.options_.maxHeaders) return bytes;
  transfer.refused_ = fmt::format("the response's headers exceed {} bytes", transfer.options_.maxHeaders);
  return 0;
}

std::size_t HttpTransfer::onBody(char* data, std::size_t size, std::size_t count, void* self) {
  auto& transfer = *static_cast<HttpTransfer*>(self);
  const std::size_t bytes = size * count;
  if (bytes <= transfer.options_.maxBody - transfer.body_.size()) {
    transfer.body_.append(data, bytes);
    return bytes;
  }
  transfer.refused_ = fmt::format("the response's body exceeds {} bytes", transfer.options_.maxBody);
  return 0;
}

// libcurl sends a request again when a kept connection turns out to be dead. The first one may have had its
// effect, so the second is not sent.
int HttpTransfer::onRequestStarting(void* self, char*, char*, int, int) {
  auto& transfer = *static_cast<HttpTransfer*>(self);
  if (!transfer.started_) {
    transfer.started_ = true;
    return CURL_PREREQFUNC_OK;
  }
  transfer.refused_ = "the connection was lost";
  return CURL_PREREQFUNC_ABORT;
}

Result<HttpReply> HttpTransfer::result(CURLcode code) {
  long status = 0;
  curl_easy_getinfo(easy(), CURLINFO_RESPONSE_CODE, &status);
  // libcurl takes a connection that is closed among the headers for a complete answer without a body.
  if (code == CURLE_OK && !headersEnded_) return Unexpected(urlErrors::other("the connection was lost"));
  if (code == CURLE_OK) return reply(static_cast<int>(status));
  const bool isNoHttp = code == CURLE_UNSUPPORTED_PROTOCOL || code == CURLE_WEIRD_SERVER_REPLY;
  if (isNoHttp && status == 0) return HttpReply{};
  return Unexpected(fault(code));
}

HttpReply HttpTransfer::reply(int status) {
  HttpReply reply;
  reply.status = status;
  curl_header* header = nullptr;
  while ((header = curl_easy_nextheader(easy(), CURLH_HEADER, -1, header)) != nullptr) {
    reply.headers.emplace_back(header->name, text::trimmed(header->value));  // an empty one comes as "\r"
  }
  const bool mayHaveBody = request_.method != "HEAD" && status >= 200 && status != 204 && status != 304;
  if (mayHaveBody) reply.body = std::move(body_);
  return reply;
}

Error HttpTransfer::fault(CURLcode code) const {
  if (!refused_.empty()) return urlErrors::other(refused_);
  switch (code) {
    case CURLE_OPERATION_TIMEDOUT:
      return urlErrors::timedOut();
    case CURLE_COULDNT_CONNECT:
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
      return urlErrors::cannotConnectToHost();
    case CURLE_URL_MALFORMAT:
      return urlErrors::badURL();
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_WEIRD_SERVER_REPLY:
      return urlErrors::badServerResponse();
    default:
      return urlErrors::other(detail_[0] != '\0' ? detail_.data() : curl_easy_strerror(code));
  }
}

}  // namespace orlan::linuxphone
